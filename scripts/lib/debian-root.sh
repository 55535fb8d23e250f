# shellcheck shell=bash
# Functions for scripts that make and enter a root with another release of Debian. To be sourced.

# The code name of the release that this machine has.
debian_release() {
    (. /etc/os-release && echo "$VERSION_CODENAME")
}

# The address from which this machine gets its own packages, in either format of apt.
debian_package_source() {
    local file own
    own=$(debian_release)
    for file in /etc/apt/sources.list.d/*.sources; do
        [ -e "$file" ] || continue
        awk -v own="$own" 'BEGIN { RS = ""; FS = "\n" }
             $0 ~ /Types:.*deb/ && $0 ~ "Suites:.*" own && $0 ~ /Components:.*main/ {
                 for (i = 1; i <= NF; i++) if ($i ~ /^URIs:/) { split($i, word, " "); print word[2] }
             }' "$file"
    done
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [ -e "$file" ] || continue
        awk -v own="$own" '$1 == "deb" { for (i = 2; i < NF; i++)
                 if ($i ~ /:\/\// && $(i + 1) == own) print $i }' "$file"
    done
}

# make_debian_root RELEASE FOLDER: a minimal root of that release, with this machine's way to its
# packages and nothing else of this machine.
make_debian_root() {
    local release=$1 root=$2 uri script setting
    uri=$(debian_package_source | head -n 1)
    if [ -z "$uri" ]; then
        echo "no package source of Debian's in /etc/apt" >&2
        return 1
    fi
    # A release that is younger than this machine's debootstrap is made as the youngest that it knows.
    script=/usr/share/debootstrap/scripts/$release
    [ -e "$script" ] || script=/usr/share/debootstrap/scripts/sid
    mkdir --parents "$root"
    # Its mounts and processes end with it, and it ends with this script. A folder's name that it
    # could not handle is not told to it.
    # shellcheck disable=SC2016 # These are the inner shell's.
    setpriv --pdeathsig KILL unshare --mount --pid --fork --kill-child --mount-proc \
        sh -c 'mount --bind "$1" /mnt && exec debootstrap --variant=minbase "$2" /mnt "$3" "$4"' \
        sh "$root" "$release" "$uri" "$script" || return
    cp --dereference /etc/resolv.conf "$root/etc/resolv.conf" || return
    while read -r setting; do
        cp "$setting" "$root/etc/apt/apt.conf.d/90machine-${setting##*/}"
    done < <(grep --files-with-matches --recursive 'Acquire::' /etc/apt/apt.conf.d)
    # The root can be made again: there is no use in waiting for the disk after each file.
    echo force-unsafe-io >"$root/etc/dpkg/dpkg.cfg.d/throw-away"
}

# mount_debian_root FOLDER: what a running system has. The mounts end with the mount namespace.
mount_debian_root() {
    local root=$1
    mount -t proc proc "$root/proc"
    mount --rbind /dev "$root/dev"
    mount --make-rslave "$root/dev"
    mount -t tmpfs tmpfs "$root/dev/shm"
}

# enter_debian_root FOLDER command...: becomes the command, in the root, with no variable of this
# machine, and those of the array debian_root_environment. What is started beside a script ignores the
# keyboard's signals; the command does not.
debian_root_environment=()
enter_debian_root() {
    local root=$1
    shift
    exec env --ignore-environment --default-signal=INT,QUIT \
        HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin TERM=dumb LC_ALL=C.UTF-8 \
        "${debian_root_environment[@]}" chroot "$root" "$@"
}

# The same, and comes back.
run_in_debian_root() {
    (enter_debian_root "$@")
}
