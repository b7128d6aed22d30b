// Loaded into the emulator, counts the instructions that a program executes and writes the number
// into the emulator's log when the program ends:
//
//   qemu-arm -plugin file=libinstruction_counter.so -d plugin -D LOG PROGRAM ARGUMENT...
//
// A block is counted whole when it is entered. What the emulator counts one instruction at a time
// (-singlestep -d exec,nochain) is the same number, but takes a hundred times as long.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>

// The names are the emulator's. Its header for plugins is in no package of the distribution; these
// are the declarations of version 1 of that interface that are needed here.
// NOLINTBEGIN(readability-identifier-naming)
extern "C" {
struct qemu_plugin_tb;
using qemu_plugin_id_t = std::uint64_t;

std::size_t qemu_plugin_tb_n_insns(const qemu_plugin_tb* block);
void qemu_plugin_register_vcpu_tb_trans_cb(qemu_plugin_id_t id,
                                           void (*translated)(qemu_plugin_id_t, qemu_plugin_tb*));
void qemu_plugin_register_vcpu_tb_exec_inline(qemu_plugin_tb* block, int operation, void* counter,
                                              std::uint64_t added);
void qemu_plugin_register_atexit_cb(qemu_plugin_id_t id, void (*ended)(qemu_plugin_id_t, void*),
                                    void* data);
void qemu_plugin_outs(const char* text);

extern const int qemu_plugin_version;
const int qemu_plugin_version = 1;
int qemu_plugin_install(qemu_plugin_id_t id, const void* emulator, int argc, char** argv);
}

namespace {

constexpr int kAdd = 0;  // the only operation that there is

std::uint64_t executed = 0;

void countBlock(qemu_plugin_id_t /*id*/, qemu_plugin_tb* block) {
  qemu_plugin_register_vcpu_tb_exec_inline(block, kAdd, &executed, qemu_plugin_tb_n_insns(block));
}

void writeCount(qemu_plugin_id_t /*id*/, void* /*data*/) {
  std::array<char, 32> line{};
  std::snprintf(line.data(), line.size(), "%llu\n", static_cast<unsigned long long>(executed));
  qemu_plugin_outs(line.data());
}

}  // namespace

int qemu_plugin_install(qemu_plugin_id_t id, const void* /*emulator*/, int /*argc*/,
                        char** /*argv*/) {
  qemu_plugin_register_vcpu_tb_trans_cb(id, countBlock);
  qemu_plugin_register_atexit_cb(id, writeCount, nullptr);
  return 0;
}
// NOLINTEND(readability-identifier-naming)
