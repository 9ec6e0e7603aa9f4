#include "simulated/scenario/direct3d_section.h"

#include "simulated/scenario/field_reader.h"

#include <limits>
#include <map>

namespace vexil::simulated {

namespace {

constexpr std::uint64_t most32 = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint64_t surfaceBytes = std::uint64_t{1} << 22;
constexpr std::uint64_t surfaceExtent = 1024;
constexpr std::uint64_t pixelBytes = 4;
constexpr std::uint64_t mostRow = 15;
constexpr std::uint64_t mostColumn = 4;
constexpr std::uint64_t mostOperand = 5;
constexpr std::uint64_t mostGap = 65536;
constexpr double mostSeconds = 1e9;
constexpr std::uint64_t mostExtent = 16384; ///< of a texture
constexpr std::uint64_t mostMemory = std::uint64_t{1} << 50;

constexpr std::uint64_t outOfMemory = 0x8007000E;
constexpr std::uint64_t failure = 0x80004005;
constexpr std::uint64_t removed = 0x887A0005;

/// HRESULTs by the names of their constants.
const std::map<std::string, std::uint64_t>& results() {
    static const std::map<std::string, std::uint64_t> names = {
        {"E_FAIL", failure},
        {"E_INVALIDARG", 0x80070057},
        {"E_NOINTERFACE", 0x80004002},
        {"E_OUTOFMEMORY", outOfMemory},
        {"DXGI_ERROR_DEVICE_HUNG", 0x887A0006},
        {"DXGI_ERROR_DEVICE_REMOVED", removed},
        {"DXGI_ERROR_DEVICE_RESET", 0x887A0007},
        {"DXGI_ERROR_DRIVER_INTERNAL_ERROR", 0x887A0020},
        {"DXGI_ERROR_UNSUPPORTED", 0x887A0004},
    };
    return names;
}

/// A failure, that is, a negative HRESULT.
std::uint32_t readResult(FieldReader& reader, std::uint64_t fallback) {
    const auto result = static_cast<std::uint32_t>(reader.namedNumber("result", results(), most32, fallback));
    if (result < 0x80000000U) {
        reader.fail("result", "must be the code of a failure (0x80000000 and above)");
    }
    return result;
}

Direct3DFault readSurfaceAllocation(FieldReader& reader) {
    Direct3DFault fault;
    fault.number = static_cast<std::uint32_t>(reader.number("surface", 1, most32));
    fault.result = readResult(reader, outOfMemory);
    return fault;
}

Direct3DFault readChangedByte(FieldReader& reader) {
    Direct3DFault fault;
    fault.number = static_cast<std::uint32_t>(reader.number("surface", 1, most32));
    fault.offset = static_cast<std::uint32_t>(reader.number("offset", 0, surfaceBytes - 1, 0));
    fault.mask = static_cast<std::uint8_t>(reader.number("mask", 1, 255, 1));
    return fault;
}

Direct3DFault readDeviceRemoved(FieldReader& reader) {
    Direct3DFault fault;
    fault.number = static_cast<std::uint32_t>(reader.number("surface", 0, most32));
    fault.result = readResult(reader, removed);
    return fault;
}

Direct3DFault readFailingCall(FieldReader& reader) {
    Direct3DFault fault;
    fault.call = failingDirect3DCalls()[reader.choice("call", failingDirect3DCalls())];
    fault.number = static_cast<std::uint32_t>(reader.number("number", 1, most32, 1));
    fault.result = readResult(reader, failure);
    return fault;
}

Direct3DFault readNothing(FieldReader&) { return {}; }

OperationSet readSet(FieldReader& reader) {
    return static_cast<OperationSet>(reader.choice("set", {"integers", "floats", "dotProducts", "doubles"}));
}

/// What all faults of a number have in common.
Direct3DFault readNumber(FieldReader& reader) {
    Direct3DFault fault;
    fault.arithmetic.set = readSet(reader);
    fault.arithmetic.row = static_cast<std::uint32_t>(reader.number("row", 0, mostRow));
    fault.arithmetic.column = static_cast<std::uint32_t>(reader.number("column", 0, mostColumn, 0));
    fault.arithmetic.change =
        static_cast<ArithmeticFault::Change>(reader.choice("change", {"value", "ulp", "sign", "nan"}));
    return fault;
}

Direct3DFault readWrongOperand(FieldReader& reader) {
    auto fault = readNumber(reader);
    fault.arithmetic.operand = static_cast<std::uint32_t>(reader.number("operand", 0, mostOperand));
    return fault;
}

Direct3DFault readIdleDispatch(FieldReader& reader) {
    Direct3DFault fault;
    fault.arithmetic.set = readSet(reader);
    return fault;
}

Direct3DFault readWrongPixel(FieldReader& reader) {
    Direct3DFault fault;
    fault.number = static_cast<std::uint32_t>(reader.number("drawing", 1, most32));
    const auto x = reader.number("x", 0, surfaceExtent - 1);
    const auto y = reader.number("y", 0, surfaceExtent - 1);
    fault.offset = static_cast<std::uint32_t>((y * surfaceExtent + x) * pixelBytes);
    fault.mask = static_cast<std::uint8_t>(reader.number("mask", 1, 255, 1));
    return fault;
}

Direct3DFault readMappedPitch(FieldReader& reader) {
    Direct3DFault fault;
    fault.offset = static_cast<std::uint32_t>(reader.number("gap", 1, mostGap));
    return fault;
}

Direct3DFault readDifferingPixel(FieldReader& reader) {
    Direct3DFault fault;
    fault.picture.from = reader.has("from") ? reader.real("from", 0, mostSeconds) : 0;
    if (reader.has("until")) {
        fault.picture.until = reader.real("until", fault.picture.from, mostSeconds);
    }
    fault.picture.fromPeriod = static_cast<std::uint32_t>(reader.number("fromPeriod", 1, most32, 1));
    fault.picture.x = static_cast<std::uint32_t>(reader.number("x", 0, mostExtent - 1));
    fault.picture.y = static_cast<std::uint32_t>(reader.number("y", 0, mostExtent - 1));
    fault.mask = static_cast<std::uint8_t>(reader.number("mask", 1, 255, 1));
    return fault;
}

Direct3DFault readRemovedInDrawing(FieldReader& reader) {
    Direct3DFault fault;
    fault.number = static_cast<std::uint32_t>(reader.number("drawing", 1, most32));
    fault.result = readResult(reader, removed);
    return fault;
}

Direct3DFault readLostCall(FieldReader& reader) {
    Direct3DFault fault;
    fault.call = losableDirect3DCalls()[reader.choice("call", losableDirect3DCalls())];
    fault.number = static_cast<std::uint32_t>(reader.number("number", 1, most32, 1));
    return fault;
}

struct KindRow {
    Direct3DFault::Kind kind;
    const char* word;
    Direct3DFault (*read)(FieldReader&);
};

constexpr KindRow kinds[] = {
    {Direct3DFault::Kind::surfaceAllocation, "surfaceAllocation", readSurfaceAllocation},
    {Direct3DFault::Kind::changedByte, "changedByte", readChangedByte},
    {Direct3DFault::Kind::deviceRemoved, "deviceRemoved", readDeviceRemoved},
    {Direct3DFault::Kind::failingCall, "failingCall", readFailingCall},
    {Direct3DFault::Kind::noResolveSupport, "noResolveSupport", readNothing},
    {Direct3DFault::Kind::noDoubles, "noDoubles", readNothing},
    {Direct3DFault::Kind::wrongResult, "wrongResult", readNumber},
    {Direct3DFault::Kind::wrongOperand, "wrongOperand", readWrongOperand},
    {Direct3DFault::Kind::idleDispatch, "idleDispatch", readIdleDispatch},
    {Direct3DFault::Kind::wrongPixel, "wrongPixel", readWrongPixel},
    {Direct3DFault::Kind::mappedPitch, "mappedPitch", readMappedPitch},
    {Direct3DFault::Kind::differingPixel, "differingPixel", readDifferingPixel},
    {Direct3DFault::Kind::removedInDrawing, "removedInDrawing", readRemovedInDrawing},
    {Direct3DFault::Kind::lostCall, "lostCall", readLostCall},
};

Direct3DFault readFault(FieldReader& reader) {
    std::vector<std::string> words;
    for (const auto& row : kinds) {
        words.emplace_back(row.word);
    }
    const auto& row = kinds[reader.choice("kind", words)];
    auto fault = row.read(reader);
    fault.kind = row.kind;
    reader.finish();
    return fault;
}

} // namespace

const std::vector<std::string>& failingDirect3DCalls() {
    static const std::vector<std::string> calls = {
        "D3D11CreateDevice",
        "IDXGIAdapter::GetDesc",
        "CreateBuffer",
        "CreateTexture2D",
        "CreateShaderResourceView",
        "CreateUnorderedAccessView",
        "CreateRenderTargetView",
        "CreateDepthStencilView",
        "CreateInputLayout",
        "CreateVertexShader",
        "CreatePixelShader",
        "CreateComputeShader",
        "CreateDepthStencilState",
        "CreateRasterizerState",
        "CreateSamplerState",
        "CheckFormatSupport",
        "Map",
        "CreateSwapChain",
    };
    return calls;
}

const std::vector<std::string>& losableDirect3DCalls() {
    static const std::vector<std::string> calls = {
        "OMSetRenderTargets",    "PSSetShaderResources",  "PSSetConstantBuffers", "VSSetConstantBuffers",
        "PSSetSamplers",         "IASetInputLayout",      "IASetVertexBuffers",   "IASetIndexBuffer",
        "VSSetShader",           "PSSetShader",           "RSSetViewports",       "RSSetState",
        "ClearRenderTargetView", "ClearDepthStencilView", "DrawIndexed",          "CopyResource",
    };
    return calls;
}

Direct3DSection readDirect3DSection(FieldReader& reader) {
    Direct3DSection section;
    section.present = reader.flag("present", true);
    section.description = reader.text("description", "");
    section.dedicatedMemory = reader.number("dedicatedMemory", 0, mostMemory, section.dedicatedMemory);
    section.sharedMemory = reader.number("sharedMemory", 0, mostMemory, section.sharedMemory);
    if (reader.has("memoryBudget")) {
        section.memoryBudget = reader.number("memoryBudget", 0, mostMemory);
    }
    section.oneSurfaceMemory = reader.flag("oneSurfaceMemory", false);
    for (auto& fault : reader.objects("faults")) {
        section.faults.push_back(readFault(fault));
    }
    reader.finish();
    return section;
}

} // namespace vexil::simulated
