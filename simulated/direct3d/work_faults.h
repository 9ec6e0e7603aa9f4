#pragma once

#include "simulated/scenario/direct3d_section.h"

#include <d3d11.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

namespace vexil::simulated {

/// What goes wrong in the work of one device: in the numbers that a dispatch reads and writes, in the pixels
/// that a drawing leaves, and in how a picture lies in memory. Everything is done on the real resources.
class WorkFaults {
public:
    explicit WorkFaults(const Direct3DSection& section) : section_(section) {}

    /// Around every dispatch. False if it is not to be made at all.
    [[nodiscard]] bool beginDispatch(ID3D11DeviceContext& real);
    void endDispatch(ID3D11DeviceContext& real);

    /// Behind every drawing.
    void drawn(ID3D11DeviceContext& real);

    void drawnIndexed(ID3D11DeviceContext& real);

    /// Behind every successful map: what the program is to see in the place of a texture's rows.
    void mapped(ID3D11Resource& resource, D3D11_MAPPED_SUBRESOURCE& mapped);
    /// Before every unmap. With the constants of a frame of the stress test the frame begins.
    void unmapping(ID3D11Resource& resource);
    void unmapped(ID3D11Resource& resource) { widened_.erase(&resource); }

private:
    [[nodiscard]] bool has(Direct3DFault::Kind kind) const;

    const Direct3DSection& section_;
    std::optional<OperationSet> set_; ///< of the dispatch in progress
    std::uint32_t tablesOfWords_ = 0; ///< dispatches over tables of 4-byte numbers so far
    std::uint32_t drawings_ = 0;
    std::map<ID3D11Resource*, std::vector<std::byte>> widened_;
    std::map<ID3D11Resource*, const void*> mappedConstants_;
    double frameSeconds_ = 0;
    std::uint32_t period_ = 1; ///< of the animation's time
    std::uint32_t drawingsOfFrame_ = 0;
};

/// Whether a compiled shader says that it computes in doubles.
[[nodiscard]] bool needsDoubles(std::span<const std::byte> bytecode);

} // namespace vexil::simulated
