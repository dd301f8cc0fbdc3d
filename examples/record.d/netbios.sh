# shellcheck shell=bash disable=SC2034,SC2154
about="NetBIOS names and datagrams: registration, queries, node status, browser announcements"
packages="samba samba-common-bin smbclient"

sample() {
  local host
  addresses
  for host in alpha beta; do
    mkdir -p "$work/$host"
    cat >"$work/$host.conf" <<CONF
[global]
  netbios name = ${host^^}
  workgroup = SAMPLES
  server string = a sample station
  interfaces = eth0
  bind interfaces only = yes
  name resolve order = bcast
  private dir = $work/$host
  lock directory = $work/$host
  state directory = $work/$host
  cache directory = $work/$host
  pid directory = $work/$host
  log file = $work/$host/log
CONF
  done
  sed -i 's/^\[global\]/&\n  wins support = yes\n  os level = 65\n  preferred master = yes/' "$work/alpha.conf"
  sed -i 's/^\[global\]/&\n  wins server = 192.0.2.1\n  local master = no/' "$work/beta.conf"

  # Once alpha has registered its own names it becomes the master browser; then beta comes, asks and goes.
  serve alpha nmbd --foreground --no-process-group --configfile="$work/alpha.conf"
  sleep 14
  capture netbios udp port 137 or udp port 138
  sleep 8
  serve beta nmbd --foreground --no-process-group --configfile="$work/beta.conf"
  nmbd=$!
  sleep 3
  quietly on beta nmblookup -s "$work/beta.conf" ALPHA
  quietly on beta nmblookup -s "$work/beta.conf" -S SAMPLES
  quietly on beta nmblookup -s "$work/beta.conf" -M SAMPLES
  quietly on beta nmblookup -s "$work/beta.conf" NOBODY
  quietly on beta nmblookup -s "$work/beta.conf" -A 192.0.2.1
  quietly on beta nmblookup -s "$work/beta.conf" --recursion --unicast=192.0.2.1 BETA
  quietly on beta nmblookup -s "$work/beta.conf" --recursion --unicast=192.0.2.1 NOBODY
  kill "$nmbd"
  sleep 1
  finish
}
