# shellcheck shell=bash
# For the scripts beside it: what of a bundle is code.

# Prints every program, library and plugin in the folders.
binaries_in() {
    local file
    find "$@" -type f 2>/dev/null | sort | while IFS= read -r file; do
        # Of one processor, or of several.
        case $(head -c 4 "$file" | od -An -tx1 | tr -d ' ') in
            cffaedfe | cafebabe) printf '%s\n' "$file" ;;
        esac
    done
}

# Prints what the binary is linked with, but not its own name.
libraries_of() {
    local own
    own=$(otool -arch all -D "$1" | tail -n 1)
    # Lines without a tab name the file and its processors.
    otool -arch all -L "$1" | sed -n $'s/^\t\\(.*\\) (compatibility .*/\\1/p' | sort -u |
        while IFS= read -r library; do
            [ "$library" = "$own" ] || printf '%s\n' "$library"
        done
}
