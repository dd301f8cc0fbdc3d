# shellcheck shell=bash disable=SC2034,SC2154
about="DHCP: lease, renewal, release, refused request, inform, and one BOOTP request"
packages="dnsmasq-base udhcpc isc-dhcp-client dhcping bootpc"

sample() {
  cat >"$work/lease" <<'LEASE'
#!/bin/sh
case $1$reason in
  bound | BOUND) ip addr replace "$ip$new_ip_address/24" dev "$interface" ;;
esac
exit 0
LEASE
  chmod +x "$work/lease"
  on alpha ip addr add 192.0.2.1/24 dev eth0
  serve alpha dnsmasq --keep-in-foreground --conf-file=/dev/null --user=root --pid-file= --port=0 \
    --no-ping --dhcp-authoritative --dhcp-leasefile="$work/leases" --dhcp-range=192.0.2.2,192.0.2.9,1h \
    --bootp-dynamic --domain=example.net --dhcp-boot=boot.img,alpha,192.0.2.1 \
    --dhcp-option=2,3600 --dhcp-option=3,192.0.2.1 --dhcp-option=4,192.0.2.1 --dhcp-option=6,192.0.2.1 \
    --dhcp-option=7,192.0.2.1 --dhcp-option=9,192.0.2.1 --dhcp-option=42,192.0.2.1 --dhcp-option=44,192.0.2.1
  wanting listens alpha 67
  cat >"$work/dhclient.conf" <<'CONF'
send host-name "beta";
send fqdn.fqdn "beta.example.net.";
send fqdn.encoded on;
send dhcp-client-identifier 1:02:00:00:00:00:02;
send vendor-class-identifier "sample";
send dhcp-lease-time 7200;
request subnet-mask, broadcast-address, time-offset, routers, time-servers, domain-name, domain-name-servers,
  host-name, log-servers, lpr-servers, ntp-servers, netbios-name-servers;
CONF
  cat >"$work/elsewhere" <<'CONF'
lease {
  interface "eth0";
  fixed-address 198.51.100.7;
  renew 5 2035/01/05 00:00:00; rebind 5 2036/01/04 00:00:00; expire 5 2037/01/02 00:00:00;
}
CONF

  capture dhcp udp port 67 or udp port 68
  # Lease, renewal and release.
  serve beta udhcpc -f -i eth0 -s "$work/lease" -x hostname:beta -O timezone -O wins -O 4 -O 7 -O lprsrv
  wanting says "obtained from"
  udhcpc=$!
  kill -USR1 "$udhcpc"
  wanting says "obtained from" 2
  kill -USR2 "$udhcpc"
  wanting says "released"
  kill "$udhcpc"
  # Another client comes back from another network with an address that does not fit here, and starts over.
  quietly on beta dhclient -1 -v -sf "$work/lease" -cf "$work/dhclient.conf" -lf "$work/elsewhere" -pf "$work/pid" eth0
  # A station that has its address asks for the rest.
  quietly on beta dhcping -i -c 192.0.2.2 -h 02:00:00:00:00:02 -s 192.0.2.1
  quietly on beta dhclient -r -v -sf "$work/lease" -cf "$work/dhclient.conf" -lf "$work/elsewhere" -pf "$work/pid" eth0
  on beta ip route replace default dev eth0  # bootpc sends to 255.255.255.255 through a plain socket
  quietly on beta bootpc --dev eth0 --returniffail --timeoutwait 3
  finish
}
