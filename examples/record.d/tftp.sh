# shellcheck shell=bash disable=SC2016,SC2034,SC2154
about="TFTP: reads and writes with and without options, and errors"
packages="dnsmasq-base tftpd-hpa atftp curl"

get() { quietly on beta sh -c 'cd "$0" && exec atftp "$@" 192.0.2.1' "$work/beta" "$@"; }

sample() {
  addresses
  mkdir "$work/alpha" "$work/beta"
  chmod 755 "$work"
  printf 'line %02d of a short text\n' {1..30} | tee "$work/alpha/text" >"$work/beta/text"
  printf 'line %03d of a longer text\n' {1..80} >"$work/alpha/long"

  capture tftp udp
  # This server answers from port 69 itself.
  serve alpha dnsmasq --keep-in-foreground --conf-file=/dev/null --user=root --pid-file= --port=0 \
    --enable-tftp --tftp-root="$work/alpha" --tftp-single-port
  wanting listens alpha 69
  server=$!
  get --get --remote-file text --local-file got
  get --option 'blksize 1024' --option 'tsize 0' --get --remote-file long --local-file got
  get --get --remote-file absent --local-file got
  kill "$server"
  wanting eval '! listens alpha 69'
  touch "$work/alpha/new"
  chmod 666 "$work/alpha/new"
  serve alpha in.tftpd --foreground --user root --secure --create --address 192.0.2.1:69 "$work/alpha"
  wanting listens alpha 69
  # This one answers from a new port, as most do; curl then asks from port 69, so that both directions show it.
  get --put --local-file text --remote-file new
  quietly on beta curl -sS --local-port 69 --tftp-blksize 256 -T "$work/beta/text" tftp://192.0.2.1/new
  quietly on beta curl -sS --local-port 69 --tftp-no-options tftp://192.0.2.1/text
  quietly on beta curl -sS --local-port 69 --tftp-no-options tftp://192.0.2.1/absent
  quietly on beta curl -sS --local-port 69 -T "$work/beta/text" tftp://192.0.2.1/no/such
  finish
}
