#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace vexil::simulated {

class FieldReader;

/// The sets of numbers that the arithmetic tests compute on the card.
enum class OperationSet { integers, floats, dotProducts, doubles };

/// One number of the arithmetic tests: where it is, and how it is wrong. A table has rows of five columns; a
/// dot product is a row with one column.
struct ArithmeticFault {
    enum class Change {
        value, ///< another number of about the size
        ulp,   ///< the next number away from zero
        sign,
        nan,
    };

    OperationSet set = OperationSet::integers;
    std::uint32_t operand = 0; ///< the slot of its buffer
    std::uint32_t row = 0;
    std::uint32_t column = 0;
    Change change = Change::value;
};

/// A pixel of the second of the two pictures that the stress test draws of each frame.
struct PictureFault {
    double from = 0; ///< seconds of the animation
    double until = std::numeric_limits<double>::infinity();
    std::uint32_t x = 0;
    std::uint32_t y = 0;
    std::uint32_t fromPeriod = 1; ///< a period begins whenever the time of the animation starts anew
};

/// What goes wrong on a card's Direct3D device. Surfaces and calls are counted from 1, on each new device
/// afresh.
struct Direct3DFault {
    enum class Kind {
        surfaceAllocation, ///< surface number `number` and those behind it cannot be made; `result` says why
        changedByte,   ///< of surface `number`, the byte at `offset` is stored changed by the bits of `mask`
        deviceRemoved, ///< when its turn comes to surface `number` the card is gone, 0: from the start
        failingCall,   ///< `call` fails with `result`, from its `number`th time on
        noResolveSupport, ///< no format can be resolved
        noDoubles,        ///< no shader that computes in doubles can be made
        wrongResult,      ///< of `arithmetic`, a result is stored changed
        wrongOperand,     ///< of `arithmetic`, an operand is read changed
        idleDispatch,     ///< of `arithmetic.set`, nothing is computed at all
        wrongPixel,  ///< of drawing `number`, the byte at `offset` of the picture is stored changed by `mask`
        mappedPitch, ///< rows of mapped textures have a gap of `offset` bytes behind them
        differingPixel,   ///< of `picture`, the pixel's first byte is stored changed by the bits of `mask`
        removedInDrawing, ///< with indexed drawing `number` the card is gone; `result` says why
        lostCall,         ///< `call`, which has no result, does not reach the card the `number`th time
    };

    Kind kind = Kind::failingCall;
    std::uint32_t number = 1;
    std::string call; ///< the name of a function
    std::uint32_t offset = 0;
    std::uint8_t mask = 0;
    std::uint32_t result = 0; ///< an HRESULT
    ArithmeticFault arithmetic{};
    PictureFault picture{};
};

/// A card as Direct3D shows it: the section "direct3d" of a card in a scenario.
struct Direct3DSection {
    static constexpr std::uint64_t defaultMemory = std::uint64_t{1} << 30;

    bool present = true; ///< whether DXGI lists the card at all
    std::string description;
    std::uint64_t dedicatedMemory = defaultMemory; ///< bytes
    std::uint64_t sharedMemory = defaultMemory;    ///< bytes
    /// Bytes of video memory that the card really has. Surfaces are refused beyond it.
    std::optional<std::uint64_t> memoryBudget;
    /// All surfaces of a device are one and the same memory. Lets a machine with little memory play a large
    /// card; a test that writes and reads back one surface at a time does not see it.
    bool oneSurfaceMemory = false;
    std::vector<Direct3DFault> faults;
};

/// The calls that a `failingCall` can name.
[[nodiscard]] const std::vector<std::string>& failingDirect3DCalls();
/// Those that a `lostCall` can name.
[[nodiscard]] const std::vector<std::string>& losableDirect3DCalls();

/// Reads the section. Throws `ScenarioError`.
[[nodiscard]] Direct3DSection readDirect3DSection(FieldReader& reader);

} // namespace vexil::simulated
