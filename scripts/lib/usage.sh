# shellcheck shell=bash
# To be sourced by scripts whose head says how they are called.

# Says it as the head does, and ends the script.
usage() {
    awk '/^# Usage: / { on = 1 }
         on && !/^# (Usage: | )/ { exit }
         on { sub(/^# /, ""); print }' "$0" >&2
    exit 2
}
