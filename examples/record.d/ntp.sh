# shellcheck shell=bash disable=SC2034,SC2154
about="NTP: client and server, with and without a key, control queries (mode 6)"
packages="ntpsec ntpsec-ntpdate ntpsec-ntpdig"

# The daemons may not touch the machine's clock.
clock="setpriv --bounding-set=-sys_time"

sample() {
  addresses
  mkdir "$work/alpha" "$work/beta"
  echo '1 SHA-1 sample-key' >"$work/keys"
  cat >"$work/alpha.conf" <<CONF
driftfile $work/alpha/drift
keys $work/keys
trustedkey 1
controlkey 1
refclock local minpoll 3 maxpoll 3
interface ignore wildcard
interface listen 192.0.2.1
restrict 192.0.2.0 mask 255.255.255.0 nomodify
tos orphan 3 orphanwait 1
CONF
  cat >"$work/beta.conf" <<CONF
driftfile $work/beta/drift
keys $work/keys
trustedkey 1
server 192.0.2.1 iburst minpoll 3 maxpoll 3
interface ignore wildcard
interface listen 192.0.2.2
restrict 192.0.2.0 mask 255.255.255.0 nomodify
CONF
  # shellcheck disable=SC2086
  serve alpha $clock ntpd -n -c "$work/alpha.conf"
  wanting listens alpha 123

  capture ntp udp port 123
  quietly on beta ntpdig -t 1 192.0.2.1
  sleep 10
  quietly on beta ntpdig -t 1 192.0.2.1
  quietly on beta ntpdig -t 1 -a 1 -k "$work/keys" 192.0.2.1
  # shellcheck disable=SC2086
  serve beta $clock ntpd -n -c "$work/beta.conf"
  sleep 10
  quietly on beta ntpq -n -c 'rv 0 leap,stratum,refid,reftime,rootdelay,offset' -c associations -c 'cv &1' 192.0.2.1
  quietly on beta ntpq -n -c 'rv 4711 offset' 192.0.2.1
  quietly on alpha ntpq -n -c peers -c 'rv &1' 192.0.2.2
  finish
}
