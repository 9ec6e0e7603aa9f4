#include "host/platform/libraries.h"
#include "host/platform/process.h"
#include "module/video_card/direct3d/dx11_context.h"
#include "platform/library_names.h"

#include <gtest/gtest.h>

#include <string>

// One process, as a host makes it: the stand-ins are loaded by their paths, and from then on they are what
// the names of the real libraries mean.
namespace vexil::tests {
namespace {

using host::platform::openForProcess;
using host::platform::programFolder;
using host::platform::setEnvironmentVariable;
using module::video_card::createAllDx11Contexts;
using module::video_card::enumerateAdapters;

class LoadedDirect3DLibraries : public testing::Test {
protected:
    static void SetUpTestSuite() {
        setEnvironmentVariable("VEXIL_SCENARIO", VEXIL_TEST_DATA "/two_cards.json");
        for (const char* name : {platform::dxgiLibrary(), platform::direct3dLibrary()}) {
            std::string reason;
            ASSERT_NE(openForProcess(programFolder() / "simulated" / name, reason), nullptr) << reason;
        }
    }

    static std::string text(const WCHAR* wide) {
        std::string narrow;
        for (; *wide != 0; ++wide) {
            narrow.push_back(static_cast<char>(*wide));
        }
        return narrow;
    }
};

TEST_F(LoadedDirect3DLibraries, ListTheCardsOfTheScenario) {
    const auto adapters = enumerateAdapters();
    ASSERT_EQ(adapters.size(), 2U);
    EXPECT_EQ(text(adapters[0].desc.Description), "NVIDIA GeForce RTX 3060");
    EXPECT_EQ(adapters[0].desc.VendorId, 0x10DEU);
    EXPECT_EQ(adapters[0].desc.DeviceId, 0x2503U);
    EXPECT_EQ(adapters[0].desc.DedicatedVideoMemory, 0x300000000U);
    EXPECT_EQ(adapters[0].desc.SharedSystemMemory, 1048576U);
    EXPECT_EQ(text(adapters[1].desc.Description), "Intel(R) UHD Graphics 630");
    EXPECT_EQ(adapters[1].desc.VendorId, 0x8086U);
}

TEST_F(LoadedDirect3DLibraries, GiveEachCardTheLuidOfItsPlace) {
    const auto adapters = enumerateAdapters();
    ASSERT_EQ(adapters.size(), 2U);
    EXPECT_EQ(adapters[0].desc.AdapterLuid.HighPart, 0x5E1F);
    EXPECT_EQ(adapters[0].desc.AdapterLuid.LowPart, 1U);
    EXPECT_EQ(adapters[1].desc.AdapterLuid.LowPart, 3U);
}

TEST_F(LoadedDirect3DLibraries, MakeDevicesOnTheRealDirect3D) {
    const auto contexts = createAllDx11Contexts();
    ASSERT_EQ(contexts.size(), 2U);
    for (const auto& context : contexts) {
        EXPECT_EQ(context.device->GetFeatureLevel(), D3D_FEATURE_LEVEL_11_0);
        EXPECT_EQ(context.device->GetDeviceRemovedReason(), S_OK);
    }
}

TEST_F(LoadedDirect3DLibraries, BringTheFaultsOfTheScenario) {
    const auto contexts = createAllDx11Contexts();
    ASSERT_EQ(contexts.size(), 2U);
    D3D11_BUFFER_DESC desc{};
    desc.ByteWidth = 16;
    desc.Usage = D3D11_USAGE_STAGING;
    desc.CPUAccessFlags = D3D11_CPU_ACCESS_READ;
    for (const bool broken : {true, false}) {
        const auto& context = contexts[broken ? 0 : 1];
        ID3D11Buffer* buffer = nullptr;
        ASSERT_EQ(context.device->CreateBuffer(&desc, nullptr, &buffer), S_OK);
        D3D11_MAPPED_SUBRESOURCE mapped{};
        ASSERT_EQ(context.context->Map(buffer, 0, D3D11_MAP_READ, 0, &mapped), S_OK);
        context.context->Unmap(buffer, 0);
        const auto second = context.context->Map(buffer, 0, D3D11_MAP_READ, 0, &mapped);
        EXPECT_EQ(static_cast<std::uint32_t>(second), broken ? 0x887A0006U : 0U);
        if (SUCCEEDED(second)) {
            context.context->Unmap(buffer, 0);
        }
        buffer->Release();
    }
}

TEST_F(LoadedDirect3DLibraries, ReadTheScenarioAgainForEveryScan) {
    setEnvironmentVariable("VEXIL_SCENARIO", VEXIL_TEST_DATA "/no_such_file.json");
    EXPECT_TRUE(enumerateAdapters().empty());
    setEnvironmentVariable("VEXIL_SCENARIO", "");
    EXPECT_TRUE(enumerateAdapters().empty());
    setEnvironmentVariable("VEXIL_SCENARIO", VEXIL_TEST_DATA "/two_cards.json");
    EXPECT_EQ(enumerateAdapters().size(), 2U);
}

} // namespace
} // namespace vexil::tests
