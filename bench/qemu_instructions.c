/* A plugin for QEMU's user mode that counts the instructions of a program and prints their number
 * at its end. Debian has no header of the plugin interface; this declares what is used of it
 * (version 1). */
#include <inttypes.h>
#include <stdio.h>

typedef uint64_t Id;
struct Block;
int qemu_plugin_version = 1;
void qemu_plugin_register_vcpu_tb_trans_cb(Id id, void (*translated)(Id, struct Block*));
void qemu_plugin_register_atexit_cb(Id id, void (*atEnd)(Id, void*), void* data);
size_t qemu_plugin_tb_n_insns(struct Block const* block);
void qemu_plugin_register_vcpu_tb_exec_inline(struct Block* block, int operation, void* counter,
                                              uint64_t addend);

enum { addToCounter = 0 };

static uint64_t instructions;

static void translated(Id id, struct Block* block) {
    (void)id;
    qemu_plugin_register_vcpu_tb_exec_inline(block, addToCounter, &instructions,
                                             qemu_plugin_tb_n_insns(block));
}

static void atEnd(Id id, void* data) {
    (void)id;
    (void)data;
    fprintf(stderr, "instructions: %" PRIu64 "\n", instructions);
}

__attribute__((visibility("default"))) int qemu_plugin_install(Id id, void const* info, int argc,
                                                               char** argv) {
    (void)info;
    (void)argc;
    (void)argv;
    qemu_plugin_register_vcpu_tb_trans_cb(id, &translated);
    qemu_plugin_register_atexit_cb(id, &atEnd, NULL);
    return 0;
}
