#include "kernel_table.h"

#include "kernels.h"

#include <array>
#include <cstddef>
#include <utility>

VEXIL_KERNELS_BEGIN

namespace {

template <typename... Arguments, std::size_t... place>
void call(void (*kernel)(Arguments...), void** arguments, std::index_sequence<place...>) {
    kernel(*static_cast<Arguments*>(arguments[place])...);
}

template <typename... Arguments>
void call(void (*kernel)(Arguments...), void** arguments) {
    call(kernel, arguments, std::index_sequence_for<Arguments...>());
}

template <auto kernel>
void run(void** arguments) {
    call(kernel, arguments);
}

template <auto kernel>
constexpr HostKernel walk(const char* name, int referenceArgument = -1) {
    return {name, run<kernel>, true, referenceArgument};
}

template <auto kernel>
constexpr HostKernel arithmetic(const char* name) {
    return {name, run<kernel>, false, -1};
}

constexpr std::array table = {
    walk<address_kernel_check>("address_kernel_check"),
    walk<address_kernel_write>("address_kernel_write"),
    walk<block_move_kernel_check>("block_move_kernel_check"),
    walk<block_move_kernel_move>("block_move_kernel_move"),
    walk<block_move_kernel_init>("block_move_kernel_init"),
    walk<memory_fault_kernel_check>("memory_fault_kernel_check"),
    walk<memory_fault_kernel_check_write>("memory_fault_kernel_check_write"),
    walk<memory_fault_kernel_write>("memory_fault_kernel_write"),
    walk<modulo_x_kernel_check>("modulo_x_kernel_check"),
    walk<modulo_x_kernel_write>("modulo_x_kernel_write"),
    walk<moving_inversion_kernel_check>("moving_inversion_kernel_check"),
    walk<moving_inversion_kernel_check_write>("moving_inversion_kernel_check_write"),
    walk<moving_inversion_kernel_write>("moving_inversion_kernel_write"),
    walk<RandomNumberSequenceKernelCheck>("RandomNumberSequenceKernelCheck", 3),
    walk<RandomNumberSequenceKernelCheckWrite>("RandomNumberSequenceKernelCheckWrite", 3),
    walk<RandomNumberSequenceKernelWrite>("RandomNumberSequenceKernelWrite", 3),
    arithmetic<cuda_kernel_advanced_execute_integer>("cuda_kernel_advanced_execute_integer"),
    arithmetic<cuda_kernel_standard_execute_integer>("cuda_kernel_standard_execute_integer"),
    arithmetic<cuda_kernel_advanced_execute_float>("cuda_kernel_advanced_execute_float"),
    arithmetic<cuda_kernel_standard_execute_float>("cuda_kernel_standard_execute_float"),
};
static_assert(table.size() == 20);

} // namespace

std::span<const HostKernel> kernelTable() { return table; }

VEXIL_KERNELS_END
