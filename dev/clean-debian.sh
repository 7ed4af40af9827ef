# Sourced by what dev/clean-debian runs: mounts what programs in "$root" need, and brings what
# checks there have in common.
# shellcheck shell=bash
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# The first process of a namespace is not interrupted unless it says so.
trap 'exit 130' INT TERM
failed=0

mount --make-rprivate /
mount -t proc proc "$root/proc"
mkdir -p "$root/dev/shm"
mount -t tmpfs -o mode=1777 tmpfs "$root/dev/shm"
mount -t devpts -o newinstance,ptmxmode=0666,mode=0620,gid=5 devpts "$root/dev/pts"
mkdir -p /tmp/.X11-unix "$root/tmp/.X11-unix"
mount --bind /tmp/.X11-unix "$root/tmp/.X11-unix"
hostname clean-debian
echo "127.0.0.1 localhost clean-debian" >"$root/etc/hosts"
cp /etc/resolv.conf "$root/etc/resolv.conf"
printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d"
chmod 755 "$root/usr/sbin/policy-rc.d"
# It is thrown away anyway: to have it reach the disk after every file takes most of the time.
echo force-unsafe-io >"$root/etc/dpkg/dpkg.cfg.d/unsafe-io"

inside() { chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 "$@"; }
inside useradd --create-home --shell /bin/sh tester

# check TEXT COMMAND...: one line; with its last output when it has failed. All of it stays in
# "$log", if that is named.
check() {
  local text=$1
  shift
  if "$@" >"$work/output" 2>&1; then
    echo "ok      $text"
  else
    echo "FAILED  $text"
    tail -n 25 "$work/output" | sed 's/^/        /'
    failed=1
  fi
  [ -z "${log:-}" ] || { echo "--- $text"; cat "$work/output"; } >>"$log"
}

# start_display: a screen in memory, of this machine, whose name is then in "$display".
start_display() {
  display=
  Xvfb -displayfd 3 -screen 0 1024x768x24 3>"$work/display" >/dev/null 2>&1 &
  local tries
  for tries in $(seq 300); do
    [ ! -s "$work/display" ] || break
    sleep 0.1
  done
  [ -s "$work/display" ] && display=:$(cat "$work/display")
}
# open_window PICTURE COMMAND...: starts the command, waits for its main window, keeps a picture of
# it, and has it leave.
open_window() {
  local picture=$1 window
  shift
  "$@" &
  local program=$!
  window=$(DISPLAY=$display timeout 300 xdotool search --sync --onlyvisible --name '^TouchUtility$' | tail -n 1)
  sleep 3
  DISPLAY=$display import -window root "$picture"
  # A box that complains has the same title, but it does not know the key.
  DISPLAY=$display xdotool windowfocus --sync "$window" key ctrl+e
  wait "$program"
}
