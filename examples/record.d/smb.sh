# shellcheck shell=bash disable=SC2016,SC2034,SC2154
about="SMB over port 139: log on, list, read, write, rename, delete, folders, and what goes wrong"
packages="samba samba-common-bin smbclient"

# The server of both SMB samples.
smb_server() {
  addresses
  mkdir -p "$work/alpha" "$work/share/folder"
  chmod 755 "$work"
  chmod 777 "$work/share"
  # Over /etc/passwd for the programs on alpha only.
  { cat /etc/passwd && echo 'sample:x:65000:65534:sample:/nonexistent:/usr/sbin/nologin'; } >"/etc/netns/wl$$-alpha/passwd"
  printf 'line %02d of a short text\n' {1..20} >"$work/share/readme.txt"
  echo 'not for you' >"$work/share/secret.txt"
  chmod 600 "$work/share/secret.txt"
  cat >"$work/alpha.conf" <<CONF
[global]
  netbios name = ALPHA
  workgroup = SAMPLES
  server string = a sample station
  interfaces = 192.0.2.1
  bind interfaces only = yes
  smb ports = 139
  server min protocol = CORE
  server signing = disabled
  lanman auth = yes
  ntlm auth = ntlmv1-permitted
  map to guest = never
  load printers = no
  disable spoolss = yes
  passdb backend = tdbsam:$work/alpha/passdb.tdb
  private dir = $work/alpha
  lock directory = $work/alpha
  state directory = $work/alpha
  cache directory = $work/alpha
  pid directory = $work/alpha
  ncalrpc dir = $work/alpha
  log file = $work/alpha/log
[share]
  path = $work/share
  read only = no
CONF
  cat >"$work/beta.conf" <<'CONF'
[global]
  netbios name = BETA
  workgroup = SAMPLES
  client min protocol = CORE
  client max protocol = NT1
  client use spnego = no
  client ntlmv2 auth = no
  client lanman auth = yes
  client plaintext auth = no
  client signing = disabled
  client ipc min protocol = CORE
  client ipc max protocol = NT1
  client ipc signing = disabled
CONF
  printf 'secret\nsecret\n' | quietly on alpha smbpasswd -s -a -c "$work/alpha.conf" sample
  serve alpha smbd --foreground --no-process-group --configfile="$work/alpha.conf"
  wanting listens alpha 139 tcp
}

# smb COMMANDS [SMBCLIENT OPTION...]
smb() {
  local commands=$1
  shift
  quietly on beta sh -c 'cd "$0" && exec smbclient "$@"' "$work" //ALPHA/share -s "$work/beta.conf" -I 192.0.2.1 -p 139 \
    -U sample%secret -c "$commands" "$@"
}

sample() {
  smb_server
  printf 'line %02d of a short text\n' {1..10} >"$work/new.txt"

  capture smb tcp port 139
  smb 'ls; mkdir docs; put new.txt docs\new.txt; get readme.txt got; rename docs\new.txt docs\old.txt; setmode docs\old.txt +r;
       allinfo docs\old.txt; setmode docs\old.txt -r; del docs\old.txt; rmdir docs; get absent.txt got; get secret.txt got; rmdir absent; volume; echo 1 hello; logoff'
  smb 'ls' -U sample%wrong
  finish
}
