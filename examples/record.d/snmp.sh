# shellcheck shell=bash disable=SC2034,SC2154
about="SNMP: get, walk, bulk, set, errors, traps to both ports, an inform, version 3"
packages="snmpd snmp snmptrapd"

ask() {
  local tool=$1
  shift
  quietly on beta env MIBS= SNMP_PERSISTENT_DIR="$work/beta" "snmp$tool" "$@"
}

sample() {
  local system=1.3.6.1.2.1.1 interfaces=1.3.6.1.2.1.2 address=1.3.6.1.2.1.4.20.1
  local v1="-v1 -c public -t 1 -r 0 -On" v2="-v2c -c public -t 1 -r 0 -On"
  addresses
  mkdir "$work/alpha" "$work/beta"
  cat >"$work/snmpd.conf" <<'CONF'
agentaddress udp:192.0.2.1:161
rocommunity public
rwcommunity a-community-of-26-letters
sysdescr a sample station
sysobjectid 1.3.6.1.4.1.8072.3.2.10
createUser reader
rouser reader noauth
CONF
  echo 'authCommunity log public' >"$work/snmptrapd.conf"
  serve alpha env MIBS= SNMP_PERSISTENT_DIR="$work/alpha" snmpd -f -Lo -C -c "$work/snmpd.conf" -I -smux
  serve alpha env MIBS= SNMP_PERSISTENT_DIR="$work/alpha" snmptrapd -f -Lo -C -c "$work/snmptrapd.conf" udp:192.0.2.1:162
  wanting listens alpha 161
  wanting listens alpha 162

  capture snmp udp port 161 or udp port 162
  # shellcheck disable=SC2086
  {
    ask get $v1 192.0.2.1 $system.1.0 $system.2.0 $system.3.0
    ask getnext $v1 192.0.2.1 $interfaces.2.1.5.1 $interfaces.2.1.6.1 $interfaces.2.1.10.1
    ask walk $v1 192.0.2.1 $address.1
    ask get $v1 192.0.2.1 $system.77.0
    ask set $v1 -c a-community-of-26-letters 192.0.2.1 $system.4.0 s 'somebody at alpha'
    ask set $v1 192.0.2.1 $system.4.0 s 'not allowed'
    ask get $v1 -c stranger 192.0.2.1 $system.1.0
    ask get $v2 192.0.2.1 $system.4.0 $system.77.0
    ask set $v2 -c a-community-of-26-letters 192.0.2.1 $system.1.0 s 'read only'
    ask set $v2 -c a-community-of-26-letters 192.0.2.1 $system.5.0 i 5
    ask bulkget $v2 -Cn1 -Cr3 192.0.2.1 $system.3.0 1.3.6.1.2.1.31.1.1.1.6
    ask bulkget $v2 -Cr28 192.0.2.1 1.3.6.1.2.1.11
    ask trap $v1 192.0.2.1:161 1.3.6.1.4.1.8072.9999 192.0.2.2 0 0 ''
    ask trap $v1 192.0.2.1:161 1.3.6.1.4.1.8072.9999 192.0.2.2 2 0 8640000 $interfaces.2.1.1.1 i 1
    ask trap $v1 192.0.2.1:161 1.3.6.1.4.1.8072.9999 192.0.2.2 6 17 '' 1.3.6.1.4.1.8072.9999.1 s 'a text'
    ask trap $v1 192.0.2.1 1.3.6.1.4.1.8072.9999 192.0.2.2 3 0 '' $interfaces.2.1.1.1 i 1
    ask trap $v2 192.0.2.1 '' 1.3.6.1.6.3.1.1.5.1
    ask inform $v2 192.0.2.1 '' 1.3.6.1.6.3.1.1.5.2
    ask get -v3 -u reader -l noAuthNoPriv -t 1 -r 0 -On 192.0.2.1 $system.1.0
  }
  finish
}
