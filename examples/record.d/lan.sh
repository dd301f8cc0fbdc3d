# shellcheck shell=bash disable=SC2034,SC2154
about="a bit of everything: DHCP, ARP, ping, IPv6 neighbours, DNS, a TCP exchange, an unreachable port"
packages="dnsmasq-base udhcpc iputils-ping bind9-dnsutils netcat-openbsd traceroute"

sample() {
  cat >"$work/lease" <<'LEASE'
#!/bin/sh
[ "$1" = bound ] && ip addr add "$ip/24" dev "$interface"
exit 0
LEASE
  chmod +x "$work/lease"
  on alpha ip addr add 192.0.2.1/24 dev eth0
  serve alpha dnsmasq --keep-in-foreground --conf-file=/dev/null --user=root --pid-file= --no-resolv --no-hosts \
    --no-ping --dhcp-authoritative --dhcp-leasefile="$work/leases" --dhcp-range=192.0.2.2,192.0.2.2,1h \
    --domain=example.net --local=/example.net/ \
    --host-record=alpha.example.net,192.0.2.1,2001:db8::1 --cname=www.example.net,alpha.example.net \
    --mx-host=example.net,alpha.example.net,10 --txt-record=example.net,"a sample zone"
  wanting listens alpha 67
  serve alpha sh -c 'echo "hello from alpha" | nc -l -N 192.0.2.1 7777'
  wanting listens alpha 7777 tcp

  addresses6
  sleep 2  # for the reports of the groups that every IPv6 station joins

  capture lan
  quietly on beta udhcpc -f -q -n -i eth0 -s "$work/lease" -x hostname:beta
  quietly on beta ping -n -c 2 -i 0.3 192.0.2.1
  quietly on beta ping -n -c 2 -i 0.3 2001:db8::1
  quietly on beta dig +tries=1 @192.0.2.1 www.example.net A
  quietly on beta dig +tries=1 @192.0.2.1 alpha.example.net AAAA
  quietly on beta dig +tries=1 @192.0.2.1 example.net MX
  quietly on beta dig +tries=1 +noedns @192.0.2.1 example.net TXT
  quietly on beta dig +tries=1 +noedns @192.0.2.1 -x 192.0.2.1
  quietly on beta dig +tries=1 +noedns @192.0.2.1 nobody.example.net A
  quietly on beta sh -c 'echo "hello from beta" | nc -N 192.0.2.1 7777'
  quietly on beta traceroute -n -q 1 -N 1 -m 1 192.0.2.1
  finish
}
