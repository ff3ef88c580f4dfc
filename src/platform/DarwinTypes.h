#pragma once

/// The C structures and constants in which the operations of this folder answer. On macOS they
/// are the system's own; elsewhere the same layouts are declared here. The assertions below
/// hold on both, so that the logic can be tested at byte level on either system.

#include <cstddef>
#include <cstdint>

#if defined(__APPLE__)

#include <libproc.h>
#include <mach/host_info.h>
#include <mach/mach_time.h>
#include <mach/processor_info.h>
#include <mach/vm_statistics.h>
#include <net/if.h>
#include <net/route.h>
#include <sys/proc_info.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/sysctl.h>

#else

inline constexpr int PROC_PIDLISTFDS = 1;
inline constexpr int PROC_PIDTBSDINFO = 3;
inline constexpr int PROC_PIDVNODEPATHINFO = 9;
inline constexpr int PROC_PIDFDSOCKETINFO = 3;
inline constexpr int RUSAGE_INFO_V4 = 4;
inline constexpr int PROX_FDTYPE_VNODE = 1;
inline constexpr int PROX_FDTYPE_SOCKET = 2;
inline constexpr int SOCKINFO_TCP = 2;
inline constexpr int TSI_S_LISTEN = 1;
inline constexpr int CTL_KERN = 1;
inline constexpr int KERN_PROCARGS2 = 49;
inline constexpr int CTL_NET = 4;
inline constexpr int NET_RT_IFLIST2 = 6;
inline constexpr int RTM_IFINFO2 = 18;
inline constexpr int PROCESSOR_CPU_LOAD_INFO = 2;
inline constexpr int HOST_VM_INFO64 = 4;
inline constexpr int CPU_STATE_USER = 0;
inline constexpr int CPU_STATE_SYSTEM = 1;
inline constexpr int CPU_STATE_IDLE = 2;
inline constexpr int CPU_STATE_NICE = 3;
inline constexpr int CPU_STATE_MAX = 4;
inline constexpr std::size_t MAXCOMLEN = 16;
inline constexpr std::size_t MAXPATHLEN = 1024;

struct proc_bsdinfo {
  std::uint32_t pbi_flags;
  std::uint32_t pbi_status;
  std::uint32_t pbi_xstatus;
  std::uint32_t pbi_pid;
  std::uint32_t pbi_ppid;
  std::uint32_t pbi_uid;
  std::uint32_t pbi_gid;
  std::uint32_t pbi_ruid;
  std::uint32_t pbi_rgid;
  std::uint32_t pbi_svuid;
  std::uint32_t pbi_svgid;
  std::uint32_t rfu_1;
  char pbi_comm[MAXCOMLEN];
  char pbi_name[2 * MAXCOMLEN];
  std::uint32_t pbi_nfiles;
  std::uint32_t pbi_pgid;
  std::uint32_t pbi_pjobc;
  std::uint32_t e_tdev;
  std::uint32_t e_tpgid;
  std::int32_t pbi_nice;
  std::uint64_t pbi_start_tvsec;
  std::uint64_t pbi_start_tvusec;
};

struct rusage_info_v4 {
  std::uint8_t ri_uuid[16];
  std::uint64_t ri_user_time;
  std::uint64_t ri_system_time;
  std::uint64_t ri_pkg_idle_wkups;
  std::uint64_t ri_interrupt_wkups;
  std::uint64_t ri_pageins;
  std::uint64_t ri_wired_size;
  std::uint64_t ri_resident_size;
  std::uint64_t ri_phys_footprint;
  std::uint64_t ri_proc_start_abstime;
  std::uint64_t ri_proc_exit_abstime;
  std::uint64_t ri_child_user_time;
  std::uint64_t ri_child_system_time;
  std::uint64_t ri_child_pkg_idle_wkups;
  std::uint64_t ri_child_interrupt_wkups;
  std::uint64_t ri_child_pageins;
  std::uint64_t ri_child_elapsed_abstime;
  std::uint64_t ri_diskio_bytesread;
  std::uint64_t ri_diskio_byteswritten;
  std::uint64_t ri_cpu_time_qos_default;
  std::uint64_t ri_cpu_time_qos_maintenance;
  std::uint64_t ri_cpu_time_qos_background;
  std::uint64_t ri_cpu_time_qos_utility;
  std::uint64_t ri_cpu_time_qos_legacy;
  std::uint64_t ri_cpu_time_qos_user_initiated;
  std::uint64_t ri_cpu_time_qos_user_interactive;
  std::uint64_t ri_billed_system_time;
  std::uint64_t ri_serviced_system_time;
  std::uint64_t ri_logical_writes;
  std::uint64_t ri_lifetime_max_phys_footprint;
  std::uint64_t ri_instructions;
  std::uint64_t ri_cycles;
  std::uint64_t ri_billed_energy;
  std::uint64_t ri_serviced_energy;
  std::uint64_t ri_interval_max_phys_footprint;
  std::uint64_t ri_runnable_time;
};

struct proc_fdinfo {
  std::int32_t proc_fd;
  std::uint32_t proc_fdtype;
};

struct vinfo_stat {
  std::uint32_t vst_dev;
  std::uint16_t vst_mode;
  std::uint16_t vst_nlink;
  std::uint64_t vst_ino;
  std::uint32_t vst_uid;
  std::uint32_t vst_gid;
  std::int64_t vst_atime;
  std::int64_t vst_atimensec;
  std::int64_t vst_mtime;
  std::int64_t vst_mtimensec;
  std::int64_t vst_ctime;
  std::int64_t vst_ctimensec;
  std::int64_t vst_birthtime;
  std::int64_t vst_birthtimensec;
  std::int64_t vst_size;
  std::int64_t vst_blocks;
  std::int32_t vst_blksize;
  std::uint32_t vst_flags;
  std::uint32_t vst_gen;
  std::uint32_t vst_rdev;
  std::int64_t vst_qspare[2];
};

struct vnode_info {
  vinfo_stat vi_stat;
  std::int32_t vi_type;
  std::int32_t vi_pad;
  std::int32_t vi_fsid[2];
};

struct vnode_info_path {
  vnode_info vip_vi;
  char vip_path[MAXPATHLEN];
};

struct proc_vnodepathinfo {
  vnode_info_path pvi_cdir;
  vnode_info_path pvi_rdir;
};

struct proc_fileinfo {
  std::uint32_t fi_openflags;
  std::uint32_t fi_status;
  std::int64_t fi_offset;
  std::int32_t fi_type;
  std::uint32_t fi_guardflags;
};

struct sockbuf_info {
  std::uint32_t sbi_cc;
  std::uint32_t sbi_hiwat;
  std::uint32_t sbi_mbcnt;
  std::uint32_t sbi_mbmax;
  std::uint32_t sbi_lowat;
  std::int16_t sbi_flags;
  std::int16_t sbi_timeo;
};

struct in_sockinfo {
  std::int32_t insi_fport;
  std::int32_t insi_lport;  // network byte order in the low 16 bits
  std::uint64_t insi_gencnt;
  std::uint32_t insi_flags;
  std::uint32_t insi_flow;
  std::uint8_t insi_vflag;
  std::uint8_t insi_ip_ttl;
  std::uint32_t rfu_1;
  std::uint8_t insi_faddr[16];
  std::uint8_t insi_laddr[16];
  std::uint8_t insi_v4[4];
  std::uint8_t insi_v6[12];
};

struct tcp_sockinfo {
  in_sockinfo tcpsi_ini;
  std::int32_t tcpsi_state;
  std::int32_t tcpsi_timer[4];
  std::int32_t tcpsi_mss;
  std::uint32_t tcpsi_flags;
  std::uint32_t rfu_1;
  std::uint64_t tcpsi_tp;
};

struct socket_info {
  vinfo_stat soi_stat;
  std::uint64_t soi_so;
  std::uint64_t soi_pcb;
  std::int32_t soi_type;
  std::int32_t soi_protocol;
  std::int32_t soi_family;
  std::int16_t soi_options;
  std::int16_t soi_linger;
  std::int16_t soi_state;
  std::int16_t soi_qlen;
  std::int16_t soi_incqlen;
  std::int16_t soi_qlimit;
  std::int16_t soi_timeo;
  std::uint16_t soi_error;
  std::uint32_t soi_oobmark;
  sockbuf_info soi_rcv;
  sockbuf_info soi_snd;
  std::int32_t soi_kind;
  std::uint32_t rfu_1;
  union {
    in_sockinfo pri_in;
    tcp_sockinfo pri_tcp;
    std::uint8_t pri_bytes[528];
  } soi_proto;
};

struct socket_fdinfo {
  proc_fileinfo pfi;
  socket_info psi;
};

struct mach_timebase_info_data_t {
  std::uint32_t numer;
  std::uint32_t denom;
};

/// One core of a `PROCESSOR_CPU_LOAD_INFO` reply; ticks are hundredths of a second.
struct processor_cpu_load_info {
  std::uint32_t cpu_ticks[CPU_STATE_MAX];
};

struct vm_statistics64 {
  std::uint32_t free_count;
  std::uint32_t active_count;
  std::uint32_t inactive_count;
  std::uint32_t wire_count;
  std::uint64_t zero_fill_count;
  std::uint64_t reactivations;
  std::uint64_t pageins;
  std::uint64_t pageouts;
  std::uint64_t faults;
  std::uint64_t cow_faults;
  std::uint64_t lookups;
  std::uint64_t hits;
  std::uint64_t purges;
  std::uint32_t purgeable_count;
  std::uint32_t speculative_count;
  std::uint64_t decompressions;
  std::uint64_t compressions;
  std::uint64_t swapins;
  std::uint64_t swapouts;
  std::uint32_t compressor_page_count;
  std::uint32_t throttled_count;
  std::uint32_t external_page_count;
  std::uint32_t internal_page_count;
  std::uint64_t total_uncompressed_pages_in_compressor;
};

struct xsw_usage {
  std::uint64_t xsu_total;
  std::uint64_t xsu_avail;
  std::uint64_t xsu_used;
  std::uint32_t xsu_pagesize;
  std::uint32_t xsu_encrypted;
};

struct if_data64 {
  std::uint8_t ifi_type;
  std::uint8_t ifi_typelen;
  std::uint8_t ifi_physical;
  std::uint8_t ifi_addrlen;
  std::uint8_t ifi_hdrlen;
  std::uint8_t ifi_recvquota;
  std::uint8_t ifi_xmitquota;
  std::uint8_t ifi_unused1;
  std::uint32_t ifi_mtu;
  std::uint32_t ifi_metric;
  std::uint64_t ifi_baudrate;
  std::uint64_t ifi_ipackets;
  std::uint64_t ifi_ierrors;
  std::uint64_t ifi_opackets;
  std::uint64_t ifi_oerrors;
  std::uint64_t ifi_collisions;
  std::uint64_t ifi_ibytes;
  std::uint64_t ifi_obytes;
  std::uint64_t ifi_imcasts;
  std::uint64_t ifi_omcasts;
  std::uint64_t ifi_iqdrops;
  std::uint64_t ifi_noproto;
  std::uint32_t ifi_recvtiming;
  std::uint32_t ifi_xmittiming;
  std::int32_t ifi_lastchange[2];
};

struct if_msghdr2 {
  std::uint16_t ifm_msglen;
  std::uint8_t ifm_version;
  std::uint8_t ifm_type;
  std::int32_t ifm_addrs;
  std::int32_t ifm_flags;
  std::uint16_t ifm_index;
  std::int32_t ifm_snd_len;
  std::int32_t ifm_snd_maxlen;
  std::int32_t ifm_snd_drops;
  std::int32_t ifm_timer;
  if_data64 ifm_data;
};

#endif

/// Under names of their own: other systems have macros PF_ROUTE, IFF_UP and IFF_LOOPBACK, and
/// the first has another value there.
inline constexpr int DARWIN_PF_ROUTE = 17;
inline constexpr int DARWIN_IFF_UP = 0x1;
inline constexpr int DARWIN_IFF_LOOPBACK = 0x8;

/// Room for a `vm_statistics64` of any system release, in words of four bytes.
inline constexpr std::size_t vmStatisticsWords = 104;

#if defined(__APPLE__)
static_assert(DARWIN_PF_ROUTE == PF_ROUTE);
static_assert(DARWIN_IFF_UP == IFF_UP);
static_assert(DARWIN_IFF_LOOPBACK == IFF_LOOPBACK);
#endif

static_assert(sizeof(proc_bsdinfo) == 136);
static_assert(offsetof(proc_bsdinfo, pbi_ppid) == 16);
static_assert(offsetof(proc_bsdinfo, pbi_uid) == 20);
static_assert(offsetof(proc_bsdinfo, pbi_comm) == 48);
static_assert(offsetof(proc_bsdinfo, pbi_name) == 64);
static_assert(offsetof(proc_bsdinfo, pbi_start_tvsec) == 120);
static_assert(sizeof(rusage_info_v4) == 296);
static_assert(offsetof(rusage_info_v4, ri_user_time) == 16);
static_assert(offsetof(rusage_info_v4, ri_pkg_idle_wkups) == 32);
static_assert(offsetof(rusage_info_v4, ri_phys_footprint) == 72);
static_assert(offsetof(rusage_info_v4, ri_diskio_bytesread) == 144);
static_assert(offsetof(rusage_info_v4, ri_diskio_byteswritten) == 152);
static_assert(sizeof(proc_fdinfo) == 8);
static_assert(sizeof(proc_vnodepathinfo) == 2352);
static_assert(offsetof(proc_vnodepathinfo, pvi_cdir.vip_path) == 152);
static_assert(sizeof(socket_fdinfo) == 792);
static_assert(offsetof(socket_fdinfo, psi.soi_kind) == 256);
static_assert(offsetof(socket_fdinfo, psi.soi_proto) == 264);
static_assert(offsetof(in_sockinfo, insi_lport) == 4);
static_assert(sizeof(in_sockinfo) == 80);
static_assert(offsetof(tcp_sockinfo, tcpsi_state) == 80);
static_assert(CTL_NET == 4 && NET_RT_IFLIST2 == 6 && RTM_IFINFO2 == 18);
static_assert(PROCESSOR_CPU_LOAD_INFO == 2 && HOST_VM_INFO64 == 4);
static_assert(CPU_STATE_USER == 0 && CPU_STATE_SYSTEM == 1 && CPU_STATE_IDLE == 2);
static_assert(CPU_STATE_NICE == 3 && CPU_STATE_MAX == 4);
static_assert(sizeof(processor_cpu_load_info) == 16);
static_assert(sizeof(vm_statistics64) <= 4 * vmStatisticsWords);
static_assert(offsetof(vm_statistics64, wire_count) == 12);
static_assert(offsetof(vm_statistics64, purgeable_count) == 88);
static_assert(offsetof(vm_statistics64, compressor_page_count) == 128);
static_assert(offsetof(vm_statistics64, external_page_count) == 136);
static_assert(offsetof(vm_statistics64, internal_page_count) == 140);
static_assert(sizeof(xsw_usage) == 32);
static_assert(offsetof(xsw_usage, xsu_used) == 16);
static_assert(sizeof(if_msghdr2) == 160);
static_assert(offsetof(if_msghdr2, ifm_msglen) == 0);
static_assert(offsetof(if_msghdr2, ifm_type) == 3);
static_assert(offsetof(if_msghdr2, ifm_flags) == 8);
static_assert(offsetof(if_msghdr2, ifm_data.ifi_ibytes) == 96);
static_assert(offsetof(if_msghdr2, ifm_data.ifi_obytes) == 104);
