#!/usr/bin/env bash
# Runs a command inside the 32-bit Wine's root. Started in a mount namespace of its own, so that
# nothing mounted here shows on the machine or outlives the command.
#   unshare --mount wine32_enter.sh ROOT CHECKOUT COMMAND [ARGS...]
set -euo pipefail
root="$1" checkout="$2"
shift 2

# The machine's own folders appear inside at the same paths, so every path means the same there;
# the programs, libraries and settings are the root's.
bind_folder() {
  local folder="$1"
  [[ -d $root$folder ]] || mkdir -p "$root$folder" 2>/dev/null || return 0
  mount --rbind "$folder" "$root$folder" 2>/dev/null || true
}

for folder in /*; do
  [[ -d $folder && ! -L $folder ]] || continue
  case "$folder" in
    /bin | /sbin | /lib* | /usr | /etc | /var | /boot | /lost+found | /proc) ;;
    *) bind_folder "$folder" ;;
  esac
done
mount --rbind /proc "$root/proc"
for file in /etc/passwd /etc/group; do mount --bind "$file" "$root$file"; done
[[ -d $root$checkout && $root$checkout -ef $checkout ]] || bind_folder "$checkout"
exec chroot "$root" "$@"
