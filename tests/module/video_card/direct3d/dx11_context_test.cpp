#include "module/video_card/direct3d/direct3d_api.h"
#include "module/video_card/direct3d/dx11_context.h"
#include "simulated/direct3d/factory_proxy.h"
#include "support/simulated_direct3d_session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace vexil::tests {
namespace {

using module::video_card::createAllDx11Contexts;
using module::video_card::createDx11Context;
using module::video_card::Direct3DApi;
using module::video_card::direct3dApi;
using module::video_card::Dx11Context;
using module::video_card::enumerateAdapters;
using module::video_card::exchangeDirect3DApi;
using module::video_card::matchesCard;
using simulated::Direct3DFault;
using testing::ElementsAre;
using testing::IsEmpty;

/// A card that Direct3D knows by its device id.
std::shared_ptr<simulated::SimulatedCard> card(std::uint32_t deviceId,
                                               std::vector<Direct3DFault> faults = {}) {
    simulated::Direct3DSection section;
    section.dedicatedMemory = std::uint64_t{deviceId} << 20;
    section.faults = std::move(faults);
    return std::make_shared<simulated::SimulatedCard>(
        simulated::Direct3DIdentity{"Card " + std::to_string(deviceId), 0x10DE, deviceId, deviceId}, section);
}

Direct3DFault failing(const std::string& call) {
    return {Direct3DFault::Kind::failingCall, 1, call, 0, 0, 0x887A0004};
}

template <typename Infos>
std::vector<UINT> deviceIds(const Infos& infos) {
    std::vector<UINT> ids;
    for (const auto& info : infos) {
        if constexpr (requires { info.adapterInfo; }) {
            ids.push_back(info.adapterInfo.desc.DeviceId);
        } else {
            ids.push_back(info.desc.DeviceId);
        }
    }
    return ids;
}

/// Other functions in the place of the machine's, for the length of a test.
class ApiInPlace {
public:
    explicit ApiInPlace(const Direct3DApi& api) : before_(exchangeDirect3DApi(api)) {}
    ApiInPlace(const ApiInPlace&) = delete;
    ApiInPlace& operator=(const ApiInPlace&) = delete;
    ~ApiInPlace() { exchangeDirect3DApi(before_); }

private:
    Direct3DApi before_;
};

/// A factory with an adapter at every index but 1, where it fails with something else than the end of its
/// list. It notes for which it was asked.
class FailingFactory final : public simulated::FactoryProxy {
public:
    using FactoryProxy::FactoryProxy;

    /// As `CreateDXGIFactory`, in front of the one that `real` makes.
    static inline Direct3DApi::CreateFactory real = nullptr;
    static inline std::vector<UINT> asked;
    static HRESULT WINAPI create(REFIID wanted, void** factory) {
        const HRESULT result = real(wanted, factory);
        if (SUCCEEDED(result)) {
            *factory = static_cast<IDXGIFactory*>(new FailingFactory(static_cast<IDXGIFactory*>(*factory)));
        }
        return result;
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return references_.add(); }
    ULONG STDMETHODCALLTYPE Release() override { return references_.release(this); }
    HRESULT STDMETHODCALLTYPE EnumAdapters(UINT index, IDXGIAdapter** adapter) override {
        asked.push_back(index);
        if (index == 1) {
            return E_FAIL;
        }
        return index < 3 ? FactoryProxy::real()->EnumAdapters(index, adapter) : DXGI_ERROR_NOT_FOUND;
    }

    virtual ~FailingFactory() { FactoryProxy::real()->Release(); }

private:
    simulated::ReferenceCount references_;
};

Dx11Context contextWithLuid(DWORD low, LONG high) {
    Dx11Context context;
    context.adapterInfo.desc.AdapterLuid.LowPart = low;
    context.adapterInfo.desc.AdapterLuid.HighPart = high;
    return context;
}

TEST(Direct3DApi, FindsTheLibrariesOfThisMachine) {
    EXPECT_NE(direct3dApi().createFactory, nullptr);
    EXPECT_NE(direct3dApi().createDevice, nullptr);
}

TEST(Direct3DApi, GivesBackWhatAnotherTookThePlaceOf) {
    const auto real = direct3dApi();
    const auto before = exchangeDirect3DApi({});
    EXPECT_EQ(before.createDevice, real.createDevice);
    EXPECT_EQ(direct3dApi().createDevice, nullptr);
    exchangeDirect3DApi(before);
    EXPECT_EQ(direct3dApi().createDevice, real.createDevice);
}

TEST(EnumerateAdapters, ListsTheAdaptersInTheirOrderWithOneFactory) {
    const SimulatedDirect3DSession session({card(3), card(1), card(2)});
    const auto adapters = enumerateAdapters();
    EXPECT_THAT(deviceIds(adapters), ElementsAre(3, 1, 2));
    for (const auto& info : adapters) {
        EXPECT_EQ(info.factory, adapters.front().factory);
        EXPECT_NE(info.adapter, nullptr);
    }
    EXPECT_EQ(adapters[0].desc.DedicatedVideoMemory, SIZE_T{3} << 20);
    EXPECT_NE(adapters[0].adapter, adapters[1].adapter);
}

TEST(EnumerateAdapters, IsEmptyOnAMachineWithoutAdapters) {
    const SimulatedDirect3DSession session(SimulatedDirect3DSession::Cards{});
    EXPECT_THAT(enumerateAdapters(), IsEmpty());
    EXPECT_THAT(createAllDx11Contexts(), IsEmpty());
}

TEST(EnumerateAdapters, IsEmptyWithoutTheLibrary) {
    const ApiInPlace api({});
    EXPECT_THAT(enumerateAdapters(), IsEmpty());
    EXPECT_THAT(createAllDx11Contexts(), IsEmpty());
}

TEST(EnumerateAdapters, IsEmptyWhereNoFactoryCanBeMade) {
    const ApiInPlace api({[](REFIID, void**) -> HRESULT { return E_FAIL; }, direct3dApi().createDevice});
    EXPECT_THAT(enumerateAdapters(), IsEmpty());
}

TEST(EnumerateAdapters, AsksForTheFactoryOfDxgi10) {
    static GUID asked{};
    const ApiInPlace api({[](REFIID wanted, void**) -> HRESULT {
                              asked = wanted;
                              return E_FAIL;
                          },
                          nullptr});
    EXPECT_THAT(enumerateAdapters(), IsEmpty());
    constexpr GUID factory{0x7B7166EC, 0x21C7, 0x44AE, {0xB2, 0x1A, 0xC9, 0xAE, 0x32, 0x1A, 0xE3, 0x69}};
    EXPECT_TRUE(asked == factory);
}

TEST(EnumerateAdapters, LeavesOutAnAdapterThatCannotBeDescribed) {
    const SimulatedDirect3DSession session({card(1), card(2, {failing("IDXGIAdapter::GetDesc")}), card(3)});
    EXPECT_THAT(deviceIds(enumerateAdapters()), ElementsAre(1, 3));
}

TEST(EnumerateAdapters, EndsItsListingAtAnyFailure) {
    const SimulatedDirect3DSession session({card(1), card(2), card(3)});
    FailingFactory::real = direct3dApi().createFactory;
    FailingFactory::asked.clear();
    const ApiInPlace api({FailingFactory::create, direct3dApi().createDevice});
    EXPECT_THAT(deviceIds(enumerateAdapters()), ElementsAre(1));
    EXPECT_THAT(FailingFactory::asked, ElementsAre(0, 1)) << "the adapter at 2 is there to be asked for";
}

TEST(CreateDx11Context, MakesADeviceWithItsContext) {
    const SimulatedDirect3DSession session({card(1)});
    const auto adapters = enumerateAdapters();
    const auto context = createDx11Context(adapters.at(0));
    ASSERT_TRUE(context.device);
    ASSERT_TRUE(context.context);
    EXPECT_EQ(context.adapterInfo.adapter, adapters[0].adapter);
    EXPECT_EQ(context.device->GetFeatureLevel(), D3D_FEATURE_LEVEL_11_0);
    EXPECT_EQ(context.device->GetCreationFlags(), 32U);
    ID3D11DeviceContext* immediate = nullptr;
    context.device->GetImmediateContext(&immediate);
    EXPECT_EQ(immediate, context.context.get());
    immediate->Release();
}

TEST(CreateDx11Context, ThrowsWhereNoDeviceCanBeMade) {
    const SimulatedDirect3DSession session({card(1, {failing("D3D11CreateDevice")})});
    const auto adapters = enumerateAdapters();
    try {
        static_cast<void>(createDx11Context(adapters.at(0)));
        FAIL() << "made a device";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "Failed to create device");
    }
}

TEST(CreateDx11Context, ThrowsWithoutTheLibrary) {
    const SimulatedDirect3DSession session({card(1)});
    const auto adapters = enumerateAdapters();
    const ApiInPlace api({direct3dApi().createFactory, nullptr});
    EXPECT_THROW(static_cast<void>(createDx11Context(adapters.at(0))), std::runtime_error);
}

TEST(CreateAllDx11Contexts, DropsAnAdapterWithoutADeviceWhileTheOthersWork) {
    const SimulatedDirect3DSession session({card(1), card(2, {failing("D3D11CreateDevice")}), card(3)});
    EXPECT_THAT(deviceIds(createAllDx11Contexts()), ElementsAre(1, 3));
}

TEST(CreateAllDx11Contexts, DropsAnAdapterWhoseDeviceThrowsWhateverItIs) {
    const SimulatedDirect3DSession session({card(1), card(2), card(3)});
    static PFN_D3D11_CREATE_DEVICE before = nullptr;
    before = direct3dApi().createDevice;
    const ApiInPlace api(
        {direct3dApi().createFactory,
         [](IDXGIAdapter* adapter, D3D_DRIVER_TYPE driverType, HMODULE software, UINT flags,
            const D3D_FEATURE_LEVEL* levels, UINT levelCount, UINT version, ID3D11Device** device,
            D3D_FEATURE_LEVEL* level, ID3D11DeviceContext** context) -> HRESULT {
             DXGI_ADAPTER_DESC desc{};
             if (SUCCEEDED(adapter->GetDesc(&desc)) && desc.DeviceId == 2) {
                 throw 2;
             }
             return before(adapter, driverType, software, flags, levels, levelCount, version, device, level,
                           context);
         }});
    EXPECT_THAT(deviceIds(createAllDx11Contexts()), ElementsAre(1, 3));
}

TEST(CreateAllDx11Contexts, WorksOnTheRealDirect3DOfThisMachine) {
    const auto contexts = createAllDx11Contexts();
    ASSERT_FALSE(contexts.empty());
    EXPECT_EQ(contexts[0].device->GetDeviceRemovedReason(), S_OK);
}

TEST(Dx11Context, SharesItsObjectsWithItsCopiesButNotItsDescription) {
    const SimulatedDirect3DSession session({card(1)});
    const auto contexts = createAllDx11Contexts();
    auto copy = contexts.at(0);
    EXPECT_EQ(copy.device, contexts[0].device);
    EXPECT_EQ(copy.context, contexts[0].context);
    EXPECT_EQ(copy.adapterInfo.adapter, contexts[0].adapterInfo.adapter);
    EXPECT_EQ(copy.adapterInfo.factory, contexts[0].adapterInfo.factory);
    copy.adapterInfo.desc.DeviceId = 9;
    EXPECT_EQ(contexts[0].adapterInfo.desc.DeviceId, 1U) << "the description is not shared";
}

TEST(MatchesCard, ComparesBothWordsOfTheLuid) {
    const auto context = contextWithLuid(0x89ABCDEF, 0x01234567);
    EXPECT_TRUE(matchesCard(context, {0x0123456789ABCDEF}));
    EXPECT_FALSE(matchesCard(context, {0x0123456889ABCDEF}));
    EXPECT_FALSE(matchesCard(context, {0x0123456789ABCDEE}));
}

TEST(MatchesCard, TakesAnyLuidOfTheCard) {
    const auto context = contextWithLuid(5, 0);
    EXPECT_TRUE(matchesCard(context, {7, 6, 5}));
    EXPECT_FALSE(matchesCard(context, {7, 6}));
    EXPECT_FALSE(matchesCard(context, {}));
}

TEST(MatchesCard, KeepsTheSignOfTheHighWordToItself) {
    EXPECT_TRUE(matchesCard(contextWithLuid(1, -1), {0xFFFFFFFF00000001}));
    EXPECT_FALSE(matchesCard(contextWithLuid(0x80000000, 0), {0xFFFFFFFF80000000}));
}

} // namespace
} // namespace vexil::tests
