#include "module/video_card/direct3d/mapped_subresource.h"
#include "support/card_under_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>

namespace vexil::tests {
namespace {

using module::video_card::ComShared;
using module::video_card::mapSubresource;
using testing::ElementsAre;
using testing::IsEmpty;

/// A buffer that the processor can read, with 16 bytes of content.
ComShared<ID3D11Buffer> readableBuffer(CardUnderTest& card) {
    D3D11_BUFFER_DESC desc{};
    desc.ByteWidth = 16;
    desc.Usage = D3D11_USAGE_STAGING;
    desc.CPUAccessFlags = D3D11_CPU_ACCESS_READ;
    const std::uint32_t content[] = {1, 2, 3, 4};
    const D3D11_SUBRESOURCE_DATA data{content, 0, 0};
    ID3D11Buffer* made = nullptr;
    EXPECT_EQ(card.device->dx11Context().device->CreateBuffer(&desc, &data, &made), S_OK);
    static_cast<void>(card.log->take());
    return module::video_card::shareCom(made);
}

TEST(MappedSubresource, IsUnmappedByItsLastOwner) {
    CardUnderTest card;
    auto mapped = mapSubresource(card.device->dx11Context().context, readableBuffer(card), 0, D3D11_MAP_READ);
    EXPECT_EQ(static_cast<const std::uint32_t*>(mapped->pData)[2], 3U);
    auto second = mapped;
    mapped.reset();
    EXPECT_THAT(card.log->take(), ElementsAre("Map(buffer#1, 0, 1, 0)"));
    second.reset();
    EXPECT_THAT(card.log->take(), ElementsAre("Unmap(buffer#1, 0)"));
}

TEST(MappedSubresource, KeepsContextAndResourceAlive) {
    CardUnderTest card;
    auto buffer = readableBuffer(card);
    const auto context = card.device->dx11Context().context;
    const auto owners = context.use_count();
    const std::weak_ptr<ID3D11Buffer> watch = buffer;
    auto mapped = mapSubresource(context, buffer, 0, D3D11_MAP_READ);
    buffer.reset();
    EXPECT_FALSE(watch.expired());
    EXPECT_EQ(context.use_count(), owners + 1);
    mapped.reset();
    EXPECT_TRUE(watch.expired());
    EXPECT_EQ(context.use_count(), owners);
}

TEST(MappedSubresource, HasNoDataWhereTheMapFailsAndUnmapsNothing) {
    CardSetup setup;
    setup.direct3d.faults = {{simulated::Direct3DFault::Kind::failingCall, 1, "Map", 0, 0, 0x887A0005}};
    CardUnderTest card(setup);
    auto mapped = mapSubresource(card.device->dx11Context().context, readableBuffer(card), 0, D3D11_MAP_READ);
    ASSERT_TRUE(mapped);
    EXPECT_EQ(mapped->pData, nullptr);
    mapped.reset();
    EXPECT_THAT(card.log->take(), IsEmpty());
}

} // namespace
} // namespace vexil::tests
