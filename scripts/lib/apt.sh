# shellcheck shell=bash disable=SC2034,SC2154
# Debian packages and mirrors. Sourced after common.sh.

apt_updated=no

apt_get() {
  as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq -o DPkg::Lock::Timeout=600 \
    -o Dpkg::Use-Pty=0 "$@"
}

apt_update_once() {
  if [[ $apt_updated == no ]]; then
    say "packages: updating the package lists"
    apt_get update || say "packages: some lists could not be updated, going on with the old ones"
    apt_updated=yes
  fi
}

# packages_for WHERE...: the packages of scripts/packages.txt for these places.
packages_for() {
  data_lines "$kelvo_root/scripts/packages.txt" |
    awk -v where=" $* " 'index(where, " " $1 " ") { print $2 }'
}

# missing_packages NAME...: those that are not installed.
missing_packages() {
  local name
  local -A present=()
  while read -r name; do
    present[$name]=yes
    present[${name%%:*}]=yes
  done < <(dpkg-query -W -f '${binary:Package} ${db:Status-Status}\n' |
    awk '$2 == "installed" { print $1 }')
  for name in "$@"; do
    [[ -n ${present[$name]:-} ]] || printf '%s\n' "$name"
  done
}

# "URI SUITE KEYRING" of each Debian archive that apt knows, one a line; KEYRING may be "-".
apt_archives() {
  local file
  for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [[ -r $file ]] || continue
    sed -e 's/#.*//' "$file" | awk '
      $1 == "deb" {
        key = "-"; i = 2
        if ($2 ~ /^\[/) {
          while (i <= NF) {
            if (match($i, /signed-by=\/[^] ]*/)) key = substr($i, RSTART + 10, RLENGTH - 10)
            if ($(i++) ~ /\]$/) break
          }
        }
        for (c = i + 2; c <= NF; c++) if ($c == "main") print $i, $(i + 1), key
      }'
  done
  for file in /etc/apt/sources.list.d/*.sources; do
    [[ -r $file ]] || continue
    sed -e '/^#/d' "$file" | awk '
      function flush(  n, m, i, j, uris, suites) {
        if (types ~ /(^| )deb( |$)/ && components ~ /(^| )main( |$)/ && enabled != "no") {
          n = split(uri, uris, " "); m = split(suite, suites, " ")
          for (i = 1; i <= n; i++) for (j = 1; j <= m; j++) print uris[i], suites[j], key
        }
        types = components = uri = suite = enabled = ""; key = "-"
      }
      BEGIN { key = "-" }
      /^[[:space:]]*$/ { flush(); next }
      {
        field = tolower($1); value = $0; sub(/^[^:]*:[[:space:]]*/, "", value)
        if (field == "types:") types = value
        else if (field == "uris:") uri = value
        else if (field == "suites:") suite = value
        else if (field == "components:") components = value
        else if (field == "enabled:") enabled = tolower(value)
        else if (field == "signed-by:" && value ~ /^\//) { split(value, k, " "); key = k[1] }
      }
      END { flush() }'
  done
}

debian_codename() {
  # shellcheck source=/dev/null
  (. /etc/os-release && printf '%s\n' "${VERSION_CODENAME:-}")
}

# "URI KEYRING" of the mirror from which this machine gets the main archive of its release.
debian_mirror() {
  local found uri keyring
  found="$(apt_archives | awk -v suite="$(debian_codename)" '
    $2 == suite || ($2 == "stable" && !any) {
      if (!any || ($1 ~ /\/debian\/?$/ && any !~ /\/debian\/?$/)) { any = $1; key = $3 }
    }
    END { if (any) print any, key }')"
  [[ -n $found ]] || return 1
  read -r uri keyring <<<"$found"
  # Cloud images list their mirrors in a file of their own.
  if [[ $uri == mirror+file:* ]]; then
    uri="$(data_lines "${uri#mirror+file:}" | awk 'NR == 1 { print $1 }')"
  fi
  if [[ $keyring == - && -r /usr/share/keyrings/debian-archive-keyring.gpg ]]; then
    keyring=/usr/share/keyrings/debian-archive-keyring.gpg
  fi
  printf '%s %s\n' "$uri" "$keyring"
}
