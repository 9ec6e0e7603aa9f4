#include "module/video_card/stress/rendering/sphere_objects.h"

#include "simulated/direct3d/device_proxy.h"
#include "support/card_under_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <numeric>
#include <string>
#include <utility>

namespace vexil::tests {
namespace {

using namespace module::video_card;
using testing::Contains;
using testing::IsEmpty;
using Kind = simulated::Direct3DFault::Kind;

TEST(Sphere, OfAHundredSegmentsHas60000VerticesAndIndices) {
    CardUnderTest card;
    const auto sphere = createSphereObjects(100, card.device->dx11Context());
    ASSERT_EQ(sphere.result, S_OK);
    ASSERT_EQ(sphere.value.size(), 1U);
    EXPECT_EQ(sphere.value[0].vertexCount, 60000U);
    EXPECT_EQ(sphere.value[0].indexCount, 60000U);
}

TEST(Sphere, ClaimsHalfAsManyTrianglesAsVertices) {
    CardUnderTest card;
    EXPECT_EQ(createSphereObjects(100, card.device->dx11Context()).value.at(0).triangleCount, 30000U);
}

/// In doubles, by the formula alone.
std::array<double, 3> place(double theta, double phi) {
    const double degree = 3.14159265358979 / 180;
    return {std::sin(phi * degree) * std::sin(theta * degree), std::cos(theta * degree),
            std::cos(phi * degree) * std::sin(theta * degree)};
}

TEST(Sphere, GoesAroundEachPatchInSixCorners) {
    const auto vertices = sphereVertices(20);
    ASSERT_EQ(vertices.size(), 20U * 20 * 6);
    const std::pair<int, int> corners[] = {{0, 0}, {1, 0}, {1, 1}, {1, 1}, {0, 1}, {0, 0}};
    std::size_t next = 0;
    for (int i = 0; i < 20; ++i) {
        for (int j = 0; j < 20; ++j) {
            for (const auto& [theta, phi] : corners) {
                const auto expected = place((i + theta) * 9.0, (j + phi) * 18.0);
                for (std::size_t axis = 0; axis < 3; ++axis) {
                    ASSERT_NEAR(vertices[next].position[axis], expected[axis], 2e-6) << i << ", " << j;
                }
                ++next;
            }
        }
    }
}

TEST(Sphere, IsMadeByTheseCalls) {
    CardUnderTest card;
    const auto sphere = createSphereObjects(2, card.device->dx11Context());
    ASSERT_EQ(sphere.result, S_OK);
    const auto vertices = sphereVertices(2);
    std::vector<std::uint32_t> indices(24);
    std::iota(indices.begin(), indices.end(), 0U);
    const auto calls = card.log->take();
    ASSERT_EQ(calls.size(), 5U);
    EXPECT_THAT(calls[0], testing::StartsWith("CreateVertexShader("));
    EXPECT_THAT(calls[1], testing::StartsWith("CreatePixelShader("));
    EXPECT_THAT(calls[2], testing::StartsWith("CreateInputLayout([{POSITION {0, 6, 0, 0, 0, 0}}, "
                                              "{NORMAL {0, 6, 0, 12, 0, 0}}, {COLOR {0, 2, 0, 24, 0, 0}}, "
                                              "{TEXCOORD {0, 16, 0, 40, 0, 0}}], "));
    EXPECT_EQ(calls[3], "CreateBuffer({1152, 0, 1, 0, 0, 0}, " +
                            simulated::contentMark(std::as_bytes(std::span(vertices))) + ") = buffer#1");
    EXPECT_EQ(calls[4], "CreateBuffer({96, 0, 2, 0, 0, 0}, " +
                            simulated::contentMark(std::as_bytes(std::span(indices))) + ") = buffer#2");
}

/// A driver that says it has made a shader, and hands out none.
class DeviceWithoutShaders final : public simulated::DeviceProxy {
public:
    using DeviceProxy::DeviceProxy;

    HRESULT STDMETHODCALLTYPE CreatePixelShader(const void*, SIZE_T, ID3D11ClassLinkage*,
                                                ID3D11PixelShader** shader) override {
        *shader = nullptr;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        return real()->QueryInterface(id, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
};

TEST(Sphere, IsNotMadeOfAShaderThatCameBackNull) {
    CardUnderTest card;
    auto dx11 = card.device->dx11Context();
    DeviceWithoutShaders device(dx11.device.get());
    const auto real = dx11.device;
    dx11.device = {real, &device};
    const auto sphere = createSphereObjects(3, dx11);
    EXPECT_THAT(sphere.value, IsEmpty());
    EXPECT_EQ(sphere.result, static_cast<HRESULT>(0x80070006));
}

class SphereFailure : public testing::TestWithParam<std::pair<const char*, std::uint32_t>> {};

INSTANTIATE_TEST_SUITE_P(Each, SphereFailure,
                         testing::Values(std::pair("CreateVertexShader", 1U),
                                         std::pair("CreatePixelShader", 1U),
                                         std::pair("CreateInputLayout", 1U), std::pair("CreateBuffer", 1U),
                                         std::pair("CreateBuffer", 2U)),
                         [](const auto& row) { return row.param.first + std::to_string(row.param.second); });

TEST_P(SphereFailure, LeavesAnEmptyListWithTheResultBesideIt) {
    CardSetup setup;
    setup.direct3d.faults = {
        {Kind::failingCall, GetParam().second, GetParam().first, 0, 0, 0x80004005, {}, {}}};
    CardUnderTest card(setup);
    const auto sphere = createSphereObjects(3, card.device->dx11Context());
    EXPECT_THAT(sphere.value, IsEmpty());
    EXPECT_EQ(sphere.result, static_cast<HRESULT>(0x80004005));
}

} // namespace
} // namespace vexil::tests
