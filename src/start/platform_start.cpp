#include <sys/stat.h>

#include "platform/flash.h"
#include "platform/gpio.h"
#include "src/host/runner.h"
#include "src/support/message.h"

using namespace platform;

// insmod finds the files by their bare names. The order is that of their dependencies.
constinit const char* const module_list[MODULE_COUNT] = {
    "crc-ccitt.ko",
    "ecb.ko",
    "gre.ko",
    "nf_nat.ko",
    "nf_nat_masquerade_ipv4.ko",
    "nf_nat_redirect.ko",
    "nf_reject_ipv4.ko",
    "nf_reject_ipv6.ko",
    "nf_defrag_ipv4.ko",
    "nf_defrag_ipv6.ko",
    "nf_conntrack_ipv4.ko",
    "nf_conntrack_ipv6.ko",
    "nf_nat_ipv4.ko",
    "nf_log_common.ko",
    "nf_log_ipv4.ko",
    "nf_log_ipv6.ko",

    "ip_gre.ko",
    "iptable_mangle.ko",
    "iptable_nat.ko",
    "ipt_MASQUERADE.ko",
    "ipt_REJECT.ko",
    "ip6_tables.ko",
    "ip6table_filter.ko",
    "ip6table_mangle.ko",
    "ip6t_REJECT.ko",
    "libata.ko",
    "mmc_core.ko",
    "mmc_block.ko",
    "sdhci.ko",
    "sdhci-pltfm.ko",

    "xt_LOG.ko",
    "xt_comment.ko",
    "xt_conntrack.ko",
    "xt_limit.ko",
    "xt_mac.ko",
    "xt_mark.ko",
    "xt_multiport.ko",
    "xt_nat.ko",
    "xt_state.ko",
    "xt_time.ko",
    "libahci.ko",
    "libahci_platform.ko",
    "ahci_mtk.ko",
    "ppp_async.ko",
    "ppp_mppe.ko",
    "pppoe.ko",
    "pptp.ko",

    "usb-common.ko",
    "usbcore.ko",
    "usb-storage.ko",
    "ehci-hcd.ko",
    "ehci-platform.ko",
    "ehci-pci.ko",
    "xhci-hcd.ko",
    "xhci-mtk.ko",
    "xhci-pci.ko",
    "xhci-plat-hcd.ko",
    "ohci-hcd.ko",
    "ohci-platform.ko",

    "cls_fw.ko",
    "cls_route.ko",
    "cls_rsvp6.ko",
    "cls_rsvp.ko",
    "cls_tcindex.ko",
    "cls_u32.ko",
    "sch_cbq.ko",
    "sch_dsmark.ko",
    "sch_gred.ko",
    "sch_htb.ko",
    "sch_prio.ko",
    "sch_red.ko",
    "sch_sfq.ko",
    "sch_tbf.ko",
    "sch_teql.ko",
    "usblp.ko",

    "mii.ko",
    "usbnet.ko",
    "cdc_eem.ko",
    "cdc_ether.ko",
    "cdc_subset.ko",
    "rndis_host.ko",

    "ebt_802_3.ko",
    "ebt_among.ko",
    "ebt_arp.ko",
    "ebt_arpreply.ko",
    "ebt_dnat.ko",
    "ebt_ip.ko",
    "ebt_ip6.ko",
    "ebt_limit.ko",
    "ebt_mark.ko",
    "ebt_mark_m.ko",
    "ebt_pkttype.ko",
    "ebt_redirect.ko",
    "ebt_snat.ko",
    "ebt_stp.ko",
    "ebt_vlan.ko",
    "ebtables.ko",
    "ebtable_broute.ko",
    "ebtable_filter.ko",
    "ebtable_nat.ko",

    "nf_nat_proto_gre.ko",
    "nf_nat_pptp.ko",
    "mtkhnat.ko",
    "mt_wifi.ko",
    "mt_whnat.ko",
};

namespace {

void load_module(const char* name) {
    if (run_host(Command<128>("insmod %s", name)) == 0) return;
    print_error("insmod %s ==> %s\n", name, "Failed");
    const bool exists = run_host(Command<128>("ls %s%s", "", name)) == 0;
    print_error(exists ? "%s exist\n" : "%s not exist\n", name);
}

}  // namespace

int init_mt7622() {
    mkdir("/tmp/eeprom", 0744);  // may be there already
    if (check_eeprom() == -1) install_eeprom(nullptr);
    extract_eeprom();
    for (const char* const name : module_list) load_module(name);
    return init_gpio_after_insmod();
}
