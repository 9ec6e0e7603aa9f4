#include "simulated/direct3d/work_faults.h"

#include "simulated/direct3d/resource_access.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <type_traits>

namespace vexil::simulated {

namespace {

using Change = ArithmeticFault::Change;
using Kind = Direct3DFault::Kind;

constexpr UINT tableColumns = 5;
constexpr UINT dotProductsBytes = 12;
constexpr UINT doubleBytes = 8;
constexpr UINT pixelBytes = 4;
constexpr std::uint32_t secondPicture = 2; ///< drawing of a frame
constexpr UINT frameConstantsBytes = 16;   ///< width, height and the animation's time

template <typename T>
T changedBits(T value, Change change) {
    using Bits = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;
    constexpr Bits sign = Bits{1} << (sizeof(T) * 8 - 1);
    const auto bits = std::bit_cast<Bits>(value);
    return std::bit_cast<T>(change == Change::sign ? bits ^ sign : bits + 1);
}

float notANumber(float) { return std::nanf(""); }
double notANumber(double) { return std::nan(""); }

/// About twice as far from zero.
template <typename T>
T anotherNumber(T value) {
    return value + std::copysign(std::fmax(T{1}, std::fabs(value)), value);
}

template <typename T>
T changed(T value, Change change) {
    if constexpr (std::is_integral_v<T>) {
        // An integer has no NaN; what a broken unit might give is as wrong as any.
        return change == Change::value || change == Change::nan ? value + 1 : changedBits(value, change);
    } else {
        switch (change) {
        case Change::value:
            return anotherNumber(value);
        case Change::nan:
            return notANumber(value);
        default:
            return changedBits(value, change);
        }
    }
}

template <typename T>
void changeElement(ID3D11DeviceContext& real, ID3D11Buffer& buffer, UINT element, Change change) {
    T value;
    const auto offset = element * static_cast<UINT>(sizeof value);
    if (readBuffer(real, buffer, offset, std::as_writable_bytes(std::span(&value, 1)))) {
        value = changed(value, change);
        writeBuffer(real, buffer, offset, std::as_bytes(std::span(&value, 1)));
    }
}

void changeElement(ID3D11DeviceContext& real, ID3D11Buffer& buffer, const ArithmeticFault& fault) {
    const auto columns = fault.set == OperationSet::dotProducts ? 1 : tableColumns;
    const auto element = fault.row * columns + fault.column;
    switch (fault.set) {
    case OperationSet::integers:
        return changeElement<std::int32_t>(real, buffer, element, fault.change);
    case OperationSet::doubles:
        return changeElement<double>(real, buffer, element, fault.change);
    default:
        return changeElement<float>(real, buffer, element, fault.change);
    }
}

bool isFrameConstants(ID3D11Resource& resource) {
    const auto buffer = asBuffer(resource);
    return buffer && descriptionOf(*buffer).ByteWidth == frameConstantsBytes;
}

} // namespace

bool WorkFaults::beginDispatch(ID3D11DeviceContext& real) {
    set_.reset();
    const auto output = boundOutput(real);
    if (!output) {
        return true;
    }
    // The tests run the integers of a device before its floats.
    const auto desc = descriptionOf(*output);
    if (desc.StructureByteStride == doubleBytes) {
        set_ = OperationSet::doubles;
    } else if (desc.ByteWidth == dotProductsBytes) {
        set_ = OperationSet::dotProducts;
    } else {
        set_ = ++tablesOfWords_ == 1 ? OperationSet::integers : OperationSet::floats;
    }
    bool goesOn = true;
    for (const auto& fault : section_.faults) {
        if (fault.arithmetic.set != *set_) {
            continue;
        }
        goesOn = goesOn && fault.kind != Kind::idleDispatch;
        if (fault.kind == Kind::wrongOperand) {
            if (const auto input = boundInput(real, fault.arithmetic.operand)) {
                changeElement(real, *input, fault.arithmetic);
            }
        }
    }
    return goesOn;
}

void WorkFaults::endDispatch(ID3D11DeviceContext& real) {
    for (const auto& fault : section_.faults) {
        if (set_ && fault.kind == Kind::wrongResult && fault.arithmetic.set == *set_) {
            changeElement(real, *boundOutput(real), fault.arithmetic);
        }
    }
}

void WorkFaults::drawn(ID3D11DeviceContext& real) {
    ++drawings_;
    for (const auto& fault : section_.faults) {
        if (fault.kind == Kind::wrongPixel && fault.number == drawings_) {
            if (const auto target = boundTarget(real)) {
                changePixel(real, *target, fault.offset / pixelBytes, fault.mask);
            }
        }
    }
}

bool WorkFaults::has(Kind kind) const {
    return std::ranges::find(section_.faults, kind, &Direct3DFault::kind) != section_.faults.end();
}

void WorkFaults::drawnIndexed(ID3D11DeviceContext& real) {
    if (++drawingsOfFrame_ != secondPicture) {
        return;
    }
    for (const auto& fault : section_.faults) {
        const auto& place = fault.picture;
        if (fault.kind != Kind::differingPixel || period_ < place.fromPeriod || frameSeconds_ < place.from ||
            frameSeconds_ >= place.until) {
            continue;
        }
        const auto target = boundTarget(real);
        if (target && place.x < descriptionOf(*target).Width) {
            changePixel(real, *target, place.y * descriptionOf(*target).Width + place.x, fault.mask);
        }
    }
}

void WorkFaults::unmapping(ID3D11Resource& resource) {
    const auto found = mappedConstants_.find(&resource);
    if (found != mappedConstants_.end()) {
        float constants[4];
        std::memcpy(constants, found->second, sizeof constants);
        const auto seconds = static_cast<double>(constants[2]);
        period_ += seconds < frameSeconds_ ? 1 : 0;
        frameSeconds_ = seconds;
        drawingsOfFrame_ = 0;
        mappedConstants_.erase(found);
    }
}

void WorkFaults::mapped(ID3D11Resource& resource, D3D11_MAPPED_SUBRESOURCE& mapped) {
    if (has(Kind::differingPixel) && isFrameConstants(resource)) {
        mappedConstants_[&resource] = mapped.pData;
    }
    for (const auto& fault : section_.faults) {
        const auto texture = fault.kind == Kind::mappedPitch ? asTexture(resource) : nullptr;
        if (!texture) {
            continue;
        }
        const auto desc = descriptionOf(*texture);
        const std::size_t rowBytes = std::size_t{desc.Width} * pixelBytes;
        auto& memory = widened_[&resource];
        memory.assign(desc.Height * (rowBytes + fault.offset), std::byte{});
        for (std::size_t row = 0; row < desc.Height; ++row) {
            std::memcpy(memory.data() + row * (rowBytes + fault.offset),
                        static_cast<const std::byte*>(mapped.pData) + row * mapped.RowPitch, rowBytes);
        }
        mapped.pData = memory.data();
        mapped.RowPitch = static_cast<UINT>(rowBytes + fault.offset);
    }
}

bool needsDoubles(std::span<const std::byte> bytecode) {
    constexpr std::size_t countAt = 28;
    constexpr std::uint64_t doubles = 0x21; // double arithmetic, and its instructions of Direct3D 11.1
    const auto number = [&](std::size_t offset) {
        std::uint32_t value = 0;
        std::memcpy(&value, bytecode.subspan(offset).data(), sizeof value);
        return value;
    };
    for (std::size_t chunk = 0; chunk < number(countAt); ++chunk) {
        const auto offset = number(countAt + 4 + 4 * chunk);
        if (std::memcmp(bytecode.subspan(offset).data(), "SFI0", 4) == 0) {
            return (number(offset + 8) & doubles) != 0;
        }
    }
    return false;
}

} // namespace vexil::simulated
