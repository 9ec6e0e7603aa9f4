#include "kernel_cases.h"

namespace vexil::tests::plain_walk {

namespace {

// Arguments live as long as the program: a launch passes their addresses.
bool up = true, down = false;
Word zeros = 0, ones = 0xFFFFFFFF, pattern = 0x80808080, inverse = 0x7F7F7F7F, value = 0x33B37096,
     other = 0xCC4C8F69;
Word offsets[] = {0, 1, 2, 3, 6, 13, 19, 25}; // the last has its values covered by the second walk

using Flag = std::uint8_t**;

const Case cases[] = {
    {"address_kernel_write", [](Flag, Flag) { return list<>(); },
     [](const Chunk& c, const Access& a, const Word*) { addressWrite(c, a); }, nullptr},
    {"address_kernel_check", [](Flag f, Flag) { return list(f); },
     [](const Chunk& c, const Access& a, const Word*) { addressCheck(c, a); },
     [](const Chunk& c, const Access& a, const Word*) { addressWrite(c, a); }},
    {"block_move_kernel_init", [](Flag, Flag) { return list<>(); },
     [](const Chunk& c, const Access& a, const Word*) { blockMoveInit(c, a); }, nullptr},
    {"block_move_kernel_move", [](Flag, Flag) { return list<>(); },
     [](const Chunk& c, const Access& a, const Word*) { blockMoveMove(c, a); }, nullptr},
    {"block_move_kernel_check", [](Flag f, Flag) { return list(f); },
     [](const Chunk& c, const Access& a, const Word*) { blockMoveCheck(c, a); },
     [](const Chunk& c, const Access& a, const Word*) { blockMoveInit(c, a); }},
    {"memory_fault_kernel_write", [](Flag, Flag) { return list(&up, &pattern); },
     [](const Chunk& c, const Access& a, const Word*) { memoryFaultWrite(c, a, true, pattern); }, nullptr},
    {"memory_fault_kernel_write", [](Flag, Flag) { return list(&down, &value); },
     [](const Chunk& c, const Access& a, const Word*) { memoryFaultWrite(c, a, false, value); }, nullptr},
    {"memory_fault_kernel_check_write", [](Flag f, Flag) { return list(&up, &zeros, &ones, f); },
     [](const Chunk& c, const Access& a, const Word*) { memoryFaultCheckWrite(c, a, true, zeros, ones); },
     [](const Chunk& c, const Access& a, const Word*) { memoryFaultWrite(c, a, true, zeros); }},
    {"memory_fault_kernel_check_write", [](Flag f, Flag) { return list(&down, &ones, &zeros, f); },
     [](const Chunk& c, const Access& a, const Word*) { memoryFaultCheckWrite(c, a, false, ones, zeros); },
     [](const Chunk& c, const Access& a, const Word*) { memoryFaultWrite(c, a, true, ones); }},
    {"memory_fault_kernel_check", [](Flag f, Flag) { return list(&up, &pattern, f); },
     [](const Chunk& c, const Access& a, const Word*) { memoryFaultCheck(c, a, true, pattern); },
     [](const Chunk& c, const Access& a, const Word*) { memoryFaultWrite(c, a, true, pattern); }},
    {"memory_fault_kernel_check", [](Flag f, Flag) { return list(&down, &zeros, f); },
     [](const Chunk& c, const Access& a, const Word*) { memoryFaultCheck(c, a, false, zeros); },
     [](const Chunk& c, const Access& a, const Word*) { memoryFaultWrite(c, a, true, zeros); }},
    {"moving_inversion_kernel_write", [](Flag, Flag) { return list(&pattern); },
     [](const Chunk& c, const Access& a, const Word*) { movingInversionWrite(c, a, pattern); }, nullptr},
    {"moving_inversion_kernel_check_write", [](Flag f, Flag) { return list(&pattern, &inverse, f); },
     [](const Chunk& c, const Access& a, const Word*) { movingInversionCheckWrite(c, a, pattern, inverse); },
     [](const Chunk& c, const Access& a, const Word*) { movingInversionWrite(c, a, pattern); }},
    {"moving_inversion_kernel_check", [](Flag f, Flag) { return list(&inverse, f); },
     [](const Chunk& c, const Access& a, const Word*) { movingInversionCheck(c, a, inverse); },
     [](const Chunk& c, const Access& a, const Word*) { movingInversionWrite(c, a, inverse); }},
    {"RandomNumberSequenceKernelWrite", [](Flag, Flag r) { return list(r); },
     [](const Chunk& c, const Access& a, const Word* r) { randomWrite(c, a, r); }, nullptr},
    {"RandomNumberSequenceKernelCheckWrite", [](Flag f, Flag r) { return list(r, f); },
     [](const Chunk& c, const Access& a, const Word* r) { randomCheckWrite(c, a, r); },
     [](const Chunk& c, const Access& a, const Word* r) { randomWrite(c, a, r); }},
    {"RandomNumberSequenceKernelCheck", [](Flag f, Flag r) { return list(r, f); },
     [](const Chunk& c, const Access& a, const Word* r) { randomCheck(c, a, r); },
     [](const Chunk& c, const Access& a, const Word* r) { randomCheckWrite(c, a, r); }},
};

template <Word place>
Case moduloWrite() {
    return {"modulo_x_kernel_write", [](Flag, Flag) { return list(&offsets[place], &value, &other); },
            [](const Chunk& c, const Access& a, const Word*) {
                moduloXWrite(c, a, offsets[place], value, other);
            },
            nullptr};
}

template <Word place>
Case moduloCheck() {
    return {"modulo_x_kernel_check", [](Flag f, Flag) { return list(&offsets[place], &value, f); },
            [](const Chunk& c, const Access& a, const Word*) { moduloXCheck(c, a, offsets[place], value); },
            [](const Chunk& c, const Access& a, const Word*) {
                moduloXWrite(c, a, offsets[place], value, other);
            }};
}

std::vector<Case> makeCases() {
    std::vector<Case> all(std::begin(cases), std::end(cases));
    const Case modulo[] = {moduloWrite<0>(), moduloWrite<1>(), moduloWrite<2>(), moduloWrite<3>(),
                           moduloWrite<4>(), moduloWrite<5>(), moduloWrite<6>(), moduloWrite<7>(),
                           moduloCheck<0>(), moduloCheck<3>(), moduloCheck<6>()};
    all.insert(all.end(), std::begin(modulo), std::end(modulo));
    return all;
}

} // namespace

const std::vector<Case>& allCases() {
    static const std::vector<Case> all = makeCases();
    return all;
}

} // namespace vexil::tests::plain_walk
