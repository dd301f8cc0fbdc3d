# shellcheck shell=bash disable=SC2016,SC2034,SC2154
. "$here/record.d/smb.sh"
about="SMB core and LAN Manager commands one by one: open, create, read, write, seek, lock, search, check path, exit"
packages+=" samba-testsuite"

# take FRAMES TEST COMMAND...: the first short frames with these SMB commands from one test of the suite that comes with
# the server, added to the trace. The command byte stands 8 bytes into the segment.
take() {
  local frames=$1 test=$2 command commands=
  shift 2
  for command; do commands+="${commands:+ or }tcp[(tcp[12] & 0xf0) / 4 + 8] = $command"; done
  capture part -c "$frames" "tcp port 139 and less 400 and greater 90 and ($commands)"
  quietly on beta sh -c 'cd "$0" && exec timeout 5 smbtorture "$@"' "$work" //192.0.2.1/share -s "$work/beta.conf" -p 139 \
    -U sample%secret "$test"
  to=$work/parts finish >/dev/null
  # A trace is a header of 24 bytes and then records.
  tail -c "+$([[ -e $work/all ]] && echo 25 || echo 1)" "$work/parts/part.pcap" >>"$work/all"
}

sample() {
  smb_server
  mkdir "$work/parts"
  take 8 raw.open.open 0x02
  take 4 raw.open.mknew 0x0f
  take 4 raw.open.create 0x03
  take 2 raw.open.ctemp 0x0e
  take 12 raw.read 0x0a
  take 8 raw.read 0x13
  take 6 raw.write 0x0b
  take 6 raw.write 0x14
  take 6 raw.write 0x2c
  take 8 raw.seek 0x12
  take 12 raw.lock.lock 0x0c 0x0d
  take 12 raw.lock.lockx 0x24
  take 10 raw.search 0x81 0x82 0x83 0x84
  take 6 raw.chkpath 0x10
  take 2 raw.mkdir 0x11
  mv "$work/all" "$to/smb-old.pcap"
}
