# shellcheck shell=bash disable=SC2034,SC2154
about="PPPoE: discovery, LCP, CHAP, PAP, IPCP, IPV6CP, rejected CCP, echo, ping, a wrong password, end (needs a kernel with PPP)"
packages="ppp pppoe iputils-ping"

# What the server asks of the next caller.
demand() { printf '%s\n' "$@" noccp novj '+ipv6' 'lcp-echo-interval 1' nodefaultroute >"$work/server"; }

# call SECONDS PASSWORD: beta dials, talks and hangs up.
call() {
  local pppd
  printf 'beta * %s *\n' "$2" >"$beta/chap-secrets"
  cp "$beta/chap-secrets" "$beta/pap-secrets"
  chmod 600 "$beta"/*
  serve beta pppd nodetach noauth noipdefault user beta pty "pppoe -I eth0" mtu 1492 mru 1492 +ipv6
  pppd=$!
  if (($1)); then
    wanting eval 'on beta ip addr show dev ppp0 | grep -q peer'
    quietly on beta ping -n -c 2 -i 0.3 192.0.2.1
    sleep "$1"
    kill "$pppd"
  fi
  for ((i = 0; i < 100; i++)); do kill -0 "$pppd" 2>/dev/null && sleep 0.1; done
  sleep 1
}

sample() {
  modprobe -a pppoe ppp_async ppp_deflate 2>/dev/null || true
  [[ -e /dev/ppp ]] || die "this kernel has no PPP (/dev/ppp); examples/record-in-vm pppoe runs another one"
  local beta=/etc/netns/wl$$-beta/ppp alpha=/etc/netns/wl$$-alpha/ppp host i
  mkdir "$alpha" "$beta"
  echo 'beta * sample *' | tee "$alpha/chap-secrets" >"$alpha/pap-secrets"
  for host in "$alpha" "$beta"; do
    : >"$host/options"
    chmod 600 "$host"/*
  done
  demand auth require-chap 'name alpha'
  serve alpha pppoe-server -F -I eth0 -C alpha -S samples -L 192.0.2.1 -R 192.0.2.2 -N 4 -O "$work/server"
  sleep 1

  capture pppoe ether proto 0x8863 or ether proto 0x8864
  quietly on beta pppoe-discovery -I eth0
  call 2 sample
  demand auth require-pap 'name alpha'
  call 1 sample
  call 0 wrong
  finish
}
