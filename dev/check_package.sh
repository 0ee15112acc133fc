#!/usr/bin/env bash
# Builds the .deb and tries it: its parts, its desktop files, an installation into an empty root, and a start from there.
#
#   dev/check_package.sh [PRESET]      release by default
#
# With root rights and debootstrap it is also installed with its dependencies into a fresh Debian system
# (HALVINE_CLEAN_ROOT=1), which takes a network and some minutes.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
# shellcheck source=dev/setup.sh
. dev/setup.sh

preset=${1:-release}
build "$preset"
mkdir -p build/logs
(cd "build/$preset" && cpack -G DEB >"../logs/package.txt" 2>&1) || {
    cat build/logs/package.txt
    exit 1
}
package=$(ls -t "build/$preset"/*.deb | head -1)
echo "Package: $package"
dpkg-deb --field "$package" Package Version Depends

root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
dpkg-deb --extract "$package" "$root"

failed=0
check() { # check WHAT COMMAND...
    local what=$1
    shift
    if "$@" >"$root/check.txt" 2>&1; then
        echo "  ok    $what"
    else
        echo "  FAILS $what"
        sed 's/^/        /' "$root/check.txt"
        failed=1
    fi
}
check_if_there() { # the same, for a tool that need not be installed
    if command -v "$2" >/dev/null; then check "$@"; else echo "  --    $1 (no $2 here)"; fi
}

for file in bin/halvine bin/hv share/man/man1/halvine.1 share/man/man1/hv.1 share/applications/halvine.desktop \
    share/metainfo/halvine.metainfo.xml share/mime/packages/halvine.xml share/icons/hicolor/scalable/apps/halvine.svg \
    share/bash-completion/completions/halvine share/bash-completion/completions/hv share/doc/halvine/copyright; do
    check "has usr/$file" test -e "$root/usr/$file"
done
check_if_there "desktop file" desktop-file-validate "$root/usr/share/applications/halvine.desktop"
check_if_there "metainfo" appstreamcli validate --no-net "$root/usr/share/metainfo/halvine.metainfo.xml"
check_if_there "mime types" update-mime-database "$root/usr/share/mime"
check_if_there "icon" xmllint --noout "$root/usr/share/icons/hicolor/scalable/apps/halvine.svg"
for program in halvine hv; do
    check_if_there "man page of $program" man --warnings -l "$root/usr/share/man/man1/$program.1"
    check "completion of $program" bash -n "$root/usr/share/bash-completion/completions/$program"
done
check "hv starts" "$root/usr/bin/hv" --version
check "halvine starts" env QT_QPA_PLATFORM=offscreen "$root/usr/bin/halvine" --version

# stays_open COMMAND...: runs a program that opens a window, and wants it to be running still after some seconds.
stays_open() {
    local status=0
    timeout 5 "$@" || status=$?
    [ "$status" -eq 124 ]
}
check "halvine opens its window" stays_open env QT_QPA_PLATFORM=offscreen XDG_CONFIG_HOME="$root/config" "$root/usr/bin/halvine"

system_archive() { # the archive that this system's own apt reads its release from
    # shellcheck disable=SC2016  # apt-get fills these in
    apt-get indextargets --format '$(REPO_URI) $(CODENAME)' | awk -v codename="$1" '$2 == codename { print $1; exit }'
}

if [ "${HALVINE_CLEAN_ROOT:-0}" = 1 ]; then
    system=$root/system
    release=$(. /etc/os-release && echo "$VERSION_CODENAME")
    archive=$(system_archive "$release")
    debootstrap --variant=minbase "$release" "$system" ${archive:+"$archive"} >"$root/check.txt" 2>&1 || {
        cat "$root/check.txt"
        exit 1
    }
    cp "$package" "$system/tmp/halvine.deb"
    inside() { chroot "$system" env DEBIAN_FRONTEND=noninteractive QT_QPA_PLATFORM=offscreen "$@"; }
    check "clean system: installs" inside apt-get install -q -y --no-install-recommends /tmp/halvine.deb
    check "clean system: hv starts" inside hv --version
    check "clean system: halvine opens its window" stays_open chroot "$system" env QT_QPA_PLATFORM=offscreen halvine
    check "clean system: every library is there, on a desktop too" \
        inside sh -c '! find /usr/lib -path "*/qt6/plugins/platforms/*.so" | xargs ldd | grep "not found"'
    check "clean system: the desktop plugin is there" inside sh -c 'find /usr/lib -name libqxcb.so | grep .'
    check "clean system: is removed without a rest" inside sh -c 'apt-get purge -q -y halvine && ! command -v halvine'
fi
exit "$failed"
