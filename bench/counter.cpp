// A plugin of qemu's user mode: writes to standard error how many instructions the emulated program
// ran between kStart and kStop, which it marks by system calls that no kernel has.
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>

#include "bench/marks.h"

// Of qemu's plugin interface, version 1; its header is not packaged.
extern "C" {
struct qemu_plugin_tb;
using Words = uint64_t;
size_t qemu_plugin_tb_n_insns(const qemu_plugin_tb* block);
void qemu_plugin_register_vcpu_tb_trans_cb(uint64_t id,
                                           void (*translated)(uint64_t id, qemu_plugin_tb* block));
void qemu_plugin_register_vcpu_tb_exec_inline(qemu_plugin_tb* block, int operation, void* counter,
                                              uint64_t addend);
void qemu_plugin_register_vcpu_syscall_cb(uint64_t id,
                                          void (*called)(uint64_t id, unsigned cpu, int64_t number,
                                                         Words, Words, Words, Words, Words, Words,
                                                         Words, Words));

[[gnu::visibility("default")]] int qemu_plugin_version = 1;
}

namespace {

constexpr int kAdd = 0;

uint64_t executed = 0;
uint64_t started = 0;

void count_block(uint64_t, qemu_plugin_tb* block) {
    qemu_plugin_register_vcpu_tb_exec_inline(block, kAdd, &executed, qemu_plugin_tb_n_insns(block));
}

void take_mark(uint64_t, unsigned, int64_t number, Words, Words, Words, Words, Words, Words, Words,
               Words) {
    if (number == bench::kStart) started = executed;
    if (number == bench::kStop)
        fprintf(stderr, "%llu\n", static_cast<unsigned long long>(executed - started));
}

}  // namespace

extern "C" [[gnu::visibility("default")]] int qemu_plugin_install(uint64_t id, const void*, int,
                                                                  char**) {
    qemu_plugin_register_vcpu_tb_trans_cb(id, count_block);
    qemu_plugin_register_vcpu_syscall_cb(id, take_mark);
    return 0;
}
