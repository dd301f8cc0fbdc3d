# shellcheck shell=bash disable=SC2034,SC2154
about="DNS: many record types, long and compressed names, EDNS, referral, errors, zone transfer request over UDP"
packages="nsd bind9-dnsutils"

ask() { quietly on beta dig +tries=1 +time=1 +noedns "$@" @192.0.2.1; }

sample() {
  local long=a-rather-long-label-of-forty-odd-characters
  addresses
  cat >"$work/nsd.conf" <<CONF
server:
  ip-address: 192.0.2.1
  username: ""
  chroot: ""
  pidfile: ""
  zonesdir: "$work"
  database: ""
  xfrdfile: "$work/xfrd"
  xfrdir: "$work"
  zonelistfile: "$work/zonelist"
  identity: "alpha"
  refuse-any: no
remote-control:
  control-enable: no
zone:
  name: "example.net"
  zonefile: "example.net"
zone:
  name: "2.0.192.in-addr.arpa"
  zonefile: "reverse"
zone:
  name: "8.b.d.0.1.0.0.2.ip6.arpa"
  zonefile: "reverse"
CONF
  cat >"$work/example.net" <<ZONE
\$ORIGIN example.net.
\$TTL 3600
@ SOA alpha hostmaster 2026010101 7200 900 1209600 300
@ NS alpha
@ NS beta
@ MX 10 mail
@ MX 20 alpha
@ TXT "a sample zone" "in two strings"
alpha A 192.0.2.1
alpha AAAA 2001:db8::1
alpha HINFO "PC" "Linux"
beta A 192.0.2.2
beta AAAA 2001:db8::2
mail A 192.0.2.3
mail WKS 192.0.2.3 TCP smtp
www CNAME web
web CNAME alpha
_ldap._tcp SRV 0 100 389 alpha
list MINFO hostmaster errors.list
list MB mail
list MG member.list
list RP hostmaster list
*.wild A 192.0.2.9
$long.$long.$long A 192.0.2.4
$long.$long.$long AAAA 2001:db8::4
$long.$long CNAME $long.$long.$long
branch NS ns.branch
ns.branch A 192.0.2.5
ZONE
  cat >"$work/reverse" <<'ZONE'
$TTL 3600
@ SOA alpha.example.net. hostmaster.example.net. 2026010101 7200 900 1209600 300
@ NS alpha.example.net.
1 PTR alpha.example.net.
2 PTR beta.example.net.
1.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0 PTR alpha.example.net.
ZONE
  serve alpha nsd -d -c "$work/nsd.conf"
  wanting listens alpha 53

  capture dns udp port 53
  ask alpha.example.net A
  ask alpha.example.net AAAA
  ask example.net SOA
  ask example.net NS
  ask example.net MX
  ask example.net TXT
  ask www.example.net A
  ask _ldap._tcp.example.net SRV
  ask alpha.example.net HINFO
  ask mail.example.net WKS
  ask list.example.net MINFO
  ask list.example.net MB
  ask list.example.net MG
  ask any.wild.example.net A
  ask -x 192.0.2.1
  ask -x 2001:db8::1
  ask $long.$long.example.net A
  ask $long.$long.example.net AAAA
  ask example.net ANY +notcp
  ask host.branch.example.net A +norecurse
  ask nobody.example.net A +recurse +adflag
  ask example.org A
  ask . NS
  ask id.server TXT CH
  ask example.net +opcode=status
  ask example.net IXFR=1 +notcp
  ask example.net SOA +edns=0 +dnssec +nsid +cookie=0123456789abcdef +bufsize=512
  ask example.net A +edns=1 +noednsneg
  finish
}
