# shellcheck shell=bash disable=SC2034,SC2154
about="RIP version 1, version 2 and version 2 with a password: requests, responses, a withdrawn route"
packages="bird2"

# bird_conf FILE ID VERSION MORE NETWORK...
bird_conf() {
  local file=$1 id=$2 version=$3 more=$4 net
  shift 4
  {
    echo "router id $id; protocol device { scan time 1; }"
    echo 'protocol static { ipv4;'
    for net; do echo "  route $net blackhole;"; done
    echo '}'
    echo "protocol rip { ipv4 { import all; export all; };"
    echo "  interface \"eth0\" { version $version; update time 3; timeout time 9; garbage time 6; $more }; }"
  } >"$file"
}

# neighbours VERSION MORE: both stations for some seconds, alpha losing a network in between.
neighbours() {
  local host more=$2
  bird_conf "$work/alpha.conf" 192.0.2.1 "$1" "$more" 198.51.100.0/24 198.18.0.0/24
  bird_conf "$work/beta.conf" 192.0.2.2 "$1" "$more" 203.0.113.0/24 198.18.1.0/24
  for host in alpha beta; do serve $host bird -f -c "$work/$host.conf" -s "$work/$host.ctl" -P "$work/$host.pid"; done
  sleep 4
  bird_conf "$work/alpha.conf" 192.0.2.1 "$1" "$more" 198.51.100.0/24
  quietly on alpha birdc -s "$work/alpha.ctl" configure
  sleep 3
  for host in alpha beta; do quietly on $host birdc -s "$work/$host.ctl" down; done
}

sample() {
  addresses
  capture rip udp port 520
  neighbours 1 'mode broadcast;'
  neighbours 2 ''
  neighbours 2 'authentication plaintext; password "sample";'
  finish
}
