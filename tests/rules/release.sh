#!/usr/bin/env bash
# What scripts/release refuses and what it makes, in a small repository whose other scripts only say
# that they were called.
# Usage: release.sh FOLDER-OF-THE-PROJECT
set -euo pipefail
project=$1
if ! command -v git >/dev/null; then
    echo "not tested: releases (missing: git)"
    exit
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export GIT_CONFIG_GLOBAL=/dev/null GIT_CONFIG_SYSTEM=/dev/null
export GIT_AUTHOR_NAME=Nobody GIT_AUTHOR_EMAIL=nobody@example.com
export GIT_COMMITTER_NAME=Nobody GIT_COMMITTER_EMAIL=nobody@example.com

cd "$work"
git init --quiet
mkdir scripts
cp -r "$project/scripts/lib" scripts/
cp "$project/scripts/release" scripts/
printf 'build/\n' >.gitignore
printf 'project(quillmender VERSION 1.10.0 LANGUAGES CXX)\n' >CMakeLists.txt
printf '# Changes\n\n## 1.10.0 - 2026-02-03\n\n- Mends *everything*.\n\n## 1.9.0 - 2026-01-02\n\n- Older.\n' \
    >CHANGELOG.md
stub() {
    printf '#!/usr/bin/env bash\nset -eu\necho "%s $*" >>build/calls\n%s\n' "$1" "$2" >"scripts/$1"
    chmod +x "scripts/$1"
}
stub test ''
stub package 'mkdir -p build/package; echo own >build/package/quillmender_1.10.0+own_amd64.deb'
# shellcheck disable=SC2016
stub try-source 'tar --list --gzip --file "$1" >/dev/null'
# shellcheck disable=SC2016
stub in-root '
[ "$1" = --online ] && exit
mkdir -p "build/roots/$1/package"
case "$*" in
    *scripts/package*) echo other >"build/roots/$1/package/quillmender_1.10.0+other_amd64.deb" ;;
esac'
git add .
git commit --quiet --message 'Begin'
mkdir build

failures=0
fail() {
    echo "$1" >&2
    failures=$((failures + 1))
}
refuses() {
    local reason=$1 said
    shift
    if said=$("$@" 2>&1); then
        fail "not refused: $reason"
    elif [[ $said != *"$reason"* ]]; then
        fail "refused otherwise than \"$reason\": $said"
    fi
}
release=(scripts/release releases.quillmender.example https://quillmender.example/download)

scripts/release --check >/dev/null || fail "a clean tree is refused"
git tag v1.9.0
scripts/release --check >/dev/null || fail "1.10.0 is not newer than 1.9.0"

echo change >>CMakeLists.txt
refuses "not committed" "${release[@]}"
git checkout --quiet CMakeLists.txt
echo new >unknown
refuses "not committed" "${release[@]}"
git config status.showUntrackedFiles no
refuses "not committed" "${release[@]}"
git config --unset status.showUntrackedFiles
rm unknown

git tag v1.10.0
refuses "not newer than the release v1.10.0" "${release[@]}"
git tag --delete v1.10.0 >/dev/null
git tag v1.10.0-rc1
scripts/release --check >/dev/null || fail "1.10.0 is not newer than its candidate"
git tag --delete v1.10.0-rc1 >/dev/null
git tag v1.10.0rc1
scripts/release --check >/dev/null || fail "1.10.0 is not newer than a candidate without a dash"
git tag --delete v1.10.0rc1 >/dev/null
git tag v2.0
refuses "not newer than the release v2.0" "${release[@]}"
git tag --delete v2.0 >/dev/null

sed -i 's/^## 1.10.0/## 1.11.0/' CHANGELOG.md
git commit --quiet --all --message 'Log another version'
refuses "CHANGELOG.md begins with 1.11.0" "${release[@]}"
printf '# Changes\n\n## 1.10.0 - 2026-02-03\n\n## 1.9.0 - 2026-01-02\n\n- Older.\n' >CHANGELOG.md
git commit --quiet --all --message 'Log nothing'
refuses "says nothing about 1.10.0" "${release[@]}"
printf '# Changes\n\n## 1.10.0 - 2026-02-03\n\n \t\n\n' >CHANGELOG.md
git commit --quiet --all --message 'Log blanks'
refuses "says nothing about 1.10.0" "${release[@]}"
printf '# Changes\n\n## 1.10.0 - 2026-02-33\n\n- Mends.\n' >CHANGELOG.md
git commit --quiet --all --message 'Log no day'
refuses "no date of 1.10.0" "${release[@]}"
printf '# Changes\n\n## 1.10.0 - %s\n\n- Mends.\n' "$(date --date '1 month' +%F)" >CHANGELOG.md
git commit --quiet --all --message 'Log a day to come'
refuses "1.10.0 comes later" "${release[@]}"
git reset --quiet --hard HEAD~5

refuses "Usage: scripts/release HOST" scripts/release --check more
refuses "Usage: scripts/release HOST" scripts/release a.example

refuses "not a host" scripts/release 'https://a/b' https://quillmender.example/
refuses "not an https address" scripts/release a.example http://quillmender.example/
refuses "not an https address" scripts/release a.example 'https://a/"'

[ ! -e build/calls ] || fail "something was run before the refusals: $(<build/calls)"

stub test 'exit 1'
git commit --quiet --all --message 'Fail'
refuses "a test fails" "${release[@]}"
[ ! -e build/releases ] || fail "a failing test left a release"
git reset --quiet --hard HEAD~1

stub test 'git commit --quiet --allow-empty --message Meanwhile'
git commit --quiet --all --message 'Move'
refuses "has changed since the tests began" "${release[@]}"
git reset --quiet --hard HEAD~2
stub try-source 'exit 1'
git commit --quiet --all --message 'Break the archive'
refuses "the source archive does not build" "${release[@]}"
[ -z "$(ls build/releases)" ] || fail "a release that failed left $(ls build/releases)"
[ ! -e build/source.tar.gz ] || fail "a release that failed left its archive"
git reset --quiet --hard HEAD~1

"${release[@]}" >/dev/null || fail "a good tree is refused"
cd build/releases/1.10.0
sha256sum --check --quiet SHA256SUMS || fail "the checksums are wrong"
[ "$(wc -l <SHA256SUMS)" = 5 ] || fail "not five checksums"
[ "$(<notes.md)" = $'# Quillmender 1.10.0\n\n- Mends *everything*.' ] || fail "notes: $(<notes.md)"
[ "$(tr -d ' \n' <latest.json)" = \
    '{"version":"1.10.0","download_url":"https://quillmender.example/download"}' ] ||
    fail "manifest: $(<latest.json)"
[ "$(tar --extract --gzip --to-stdout --file quillmender-1.10.0.tar.gz \
    quillmender-1.10.0/CMakeLists.txt)" = "$(<"$work/CMakeLists.txt")" ] || fail "another archive"
[ "$failures" = 0 ]
