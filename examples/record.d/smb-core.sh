# shellcheck shell=bash disable=SC2034,SC2154
. "$here/record.d/smb.sh"
about="SMB of the old dialects: core offered in vain, then LAN Manager 1 with its search, short names and DOS errors"

sample() {
  smb_server
  printf 'line %02d of a short text\n' {1..10} >"$work/new.txt"

  capture smb-core tcp port 139
  smb 'ls' -m CORE
  smb 'ls; mkdir docs; put new.txt docs\new.txt; get readme.txt got; rename docs\new.txt docs\old.txt; setmode docs\old.txt +r;
       setmode docs\old.txt -r; del docs\old.txt; rmdir docs; get absent.txt got; get secret.txt got; rmdir absent; volume' \
    -m LANMAN1
  finish
}
