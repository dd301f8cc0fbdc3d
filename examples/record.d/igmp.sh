# shellcheck shell=bash disable=SC2034,SC2154
about="IGMP: a station joins and leaves a group under versions 1, 2 and 3"
packages="socat"

sample() {
  local version
  addresses
  on beta sysctl -q net.ipv4.conf.eth0.igmpv2_unsolicited_report_interval=400
  on beta sysctl -q net.ipv4.conf.eth0.igmpv3_unsolicited_report_interval=400

  capture igmp igmp
  for version in 1 2 3; do
    on beta sysctl -q net.ipv4.conf.eth0.force_igmp_version=$version
    quietly on beta timeout 1.5 socat -u udp4-recv:7777,ip-add-membership="233.252.0.$version:eth0" -
    sleep 1
  done
  finish
}
