#include "core/message_keys.h"
#include "module/video_card/device.h"
#include "module/video_card/device_identity.h"
#include "support/grouping_locale.h"
#include "text_handlers.h"

#include <gtest/gtest.h>

#include <future>

namespace vexil::module::video_card {
namespace {

using Rows = std::vector<core::KeyValue>;

class DeviceTest : public testing::Test {
protected:
    AdapterRecord record(const std::string& name, const std::string& vendorId, const std::string& location) {
        AdapterRecord adapter;
        adapter.name = name;
        adapter.vendorId = vendorId;
        adapter.deviceId = "73DF";
        adapter.location = location;
        return adapter;
    }
    std::unique_ptr<Device> make(const AdapterRecord& adapter, std::int32_t cudaVersion = 12000) {
        return std::make_unique<Device>(adapter, DeviceServices{strings_, numbers_, cudaVersion});
    }
    static std::vector<std::string> keysOf(const Rows& rows) {
        std::vector<std::string> names;
        for (const auto& row : rows) {
            names.push_back(row.first);
        }
        return names;
    }
    static Dx11Context context(UINT vendor, UINT device, SIZE_T memory) {
        Dx11Context result;
        result.adapterInfo.desc.VendorId = vendor;
        result.adapterInfo.desc.DeviceId = device;
        result.adapterInfo.desc.DedicatedVideoMemory = memory;
        return result;
    }

    sal::TextHandler strings_;
    sal::NumberText numbers_;
};

TEST_F(DeviceTest, HasAnIdOfBusAndDevice) {
    const auto device = make(record("GeForce", "10DE", "0a:1f.3"));
    EXPECT_EQ(device->id(), "0a1f");
}

TEST_F(DeviceTest, WritesItsLocationInWordsAndDecimalNumbers) {
    EXPECT_EQ(make(record("GeForce", "10DE", "01:00.0"))->rows()[1],
              core::KeyValue("LOCATION", "PCI bus 1, device 0, function 0"));
    EXPECT_EQ(make(record("GeForce", "10DE", "ff:1f.7"))->rows()[1],
              core::KeyValue("LOCATION", "PCI bus 255, device 31, function 7"));
    EXPECT_EQ(make(record("GeForce", "10DE", "10:10.f"))->rows()[1],
              core::KeyValue("LOCATION", "PCI bus 16, device 16, function 15"));
}

TEST_F(DeviceTest, ShowsAKnownNameTidied) {
    const auto device = make(record("Intel(R)  UHD Graphics 630 ", "8086", "00:02.0"));
    EXPECT_EQ(device->displayName(), "Intel UHD Graphics 630");
}

TEST_F(DeviceTest, NeverShowsANameWithAQuestionMark) {
    const auto device = make(record("Radeon ??? Graphics", "1002", "03:00.0"));
    EXPECT_EQ(device->displayName(), "AMD_GRAPHICS_CARD");
    const auto rows = device->rows();
    EXPECT_EQ(keysOf(rows), (std::vector<std::string>{"UDI", "VENDOR_ID", "DEVICE_ID", "LOCATION"}));
    EXPECT_EQ(rows[1].second, "1002");
    EXPECT_EQ(rows[2].second, "73DF");
}

TEST_F(DeviceTest, IsCalledByItsVendorWithoutAName) {
    EXPECT_EQ(make(record("", "10DE", "03:00.0"))->displayName(), "NVIDIA_GRAPHICS_CARD");
    EXPECT_EQ(make(record("", "1002", "03:00.0"))->displayName(), "AMD_GRAPHICS_CARD");
    EXPECT_EQ(make(record("", "8086", "03:00.0"))->displayName(), "INTEL_GRAPHICS_PROCESSOR");
    EXPECT_EQ(make(record("", "1234", "03:00.0"))->displayName(), "GRAPHICS_CARD");
}

TEST_F(DeviceTest, KeepsTheLettersOfTheNameInItsIdentifier) {
    const auto device = make(record("Intel(R) Arc(TM) A770 Graphics", "8086", "03:00.0"));
    ASSERT_TRUE(device->hasUdi());
    EXPECT_NE(device->udi().find("Arc"), std::string::npos);
    EXPECT_EQ(device->rows()[0], core::KeyValue("UDI", device->udi()));
}

TEST_F(DeviceTest, MakesItsIdentifierOfTheNameThatItShowsAndTheLocation) {
    const auto identifierOf = [&](const std::string& text) {
        std::string identifier;
        strings_.makeIdentifier(text, identifier);
        return identifier;
    };
    EXPECT_EQ(make(record("GeForce(TM)  RTX", "10DE", "01:00.0"))->udi(), identifierOf("GeForce RTX01:00.0"));
    EXPECT_EQ(make(record("Arc ?", "8086", "01:00.0"))->udi(),
              identifierOf("INTEL_GRAPHICS_PROCESSOR01:00.0"))
        << "a name that is not shown is not in the identifier either";
}

TEST_F(DeviceTest, HasDistinctIdentifiersForTwoCardsOfOneName) {
    EXPECT_NE(make(record("GeForce", "10DE", "01:00.0"))->udi(),
              make(record("GeForce", "10DE", "02:00.0"))->udi());
}

TEST_F(DeviceTest, HasNoIdentityWithALocationBelowFiveCharacters) {
    const auto device = make(record("GeForce", "1002", "01:0"));
    EXPECT_EQ(device->id(), "");
    EXPECT_EQ(device->displayName(), "");
    EXPECT_TRUE(device->rows().empty());
    EXPECT_FALSE(device->hasUdi());
    EXPECT_EQ(device->udi(), "");
    EXPECT_TRUE(device->isPresent());
}

TEST_F(DeviceTest, HasAnIdAndANameWithALocationOfFiveCharacters) {
    const auto device = make(record("GeForce", "1002", "01:1f"));
    EXPECT_EQ(device->id(), "011f");
    EXPECT_EQ(device->displayName(), "GeForce");
    EXPECT_EQ(keysOf(device->rows()), std::vector<std::string>{"UDI"});
}

TEST_F(DeviceTest, KeepsTheRowsOfANamelessCardWithAPoorLocation) {
    const auto device = make(record("", "1002", "01:00."));
    EXPECT_EQ(keysOf(device->rows()), (std::vector<std::string>{"UDI", "VENDOR_ID", "DEVICE_ID"}));
}

TEST_F(DeviceTest, HasItsIdentifierOnlyWithALocationOfSixCharacters) {
    auto adapter = record("GeForce", "1002", "01:00.");
    adapter.driverVersion = "1.2.3";
    const auto device = make(adapter);
    EXPECT_EQ(keysOf(device->rows()), std::vector<std::string>{"UDI"});
    EXPECT_EQ(device->id(), "0100");
}

TEST_F(DeviceTest, HasNoLocationRowWhenTheLocationIsNoNumbers) {
    EXPECT_EQ(keysOf(make(record("GeForce", "1002", "0g:00.0"))->rows()), std::vector<std::string>{"UDI"});
    EXPECT_EQ(keysOf(make(record("GeForce", "1002", "01:00.x"))->rows()), std::vector<std::string>{"UDI"});
    EXPECT_EQ(keysOf(make(record("GeForce", "1002", "01:00.00"))->rows()), std::vector<std::string>{"UDI"});
}

TEST_F(DeviceTest, DoesNotLookAtTheSeparatorsOfItsLocation) {
    EXPECT_EQ(make(record("GeForce", "1002", "0ax1f-7"))->rows()[1],
              core::KeyValue("LOCATION", "PCI bus 10, device 31, function 7"));
}

TEST_F(DeviceTest, HasNoLocationRowForAnyNumberThatCannotBeRead) {
    for (const char* location : {"0g:00.0", "00:0g.0", "00:00.g", " 0:00.0", "00:0 .0"}) {
        EXPECT_EQ(keysOf(make(record("GeForce", "1002", location))->rows()), std::vector<std::string>{"UDI"})
            << location;
    }
}

TEST_F(DeviceTest, HasNoDriverVersionRowWithoutAVersion) {
    EXPECT_EQ(keysOf(make(record("GeForce", "1002", "03:00.0"))->rows()),
              (std::vector<std::string>{"UDI", "LOCATION"}));
}

TEST_F(DeviceTest, NoticesNothingForAVendorIdInLowerCase) {
    EXPECT_TRUE(make(record("A", "10de", "03:00.0"), 0)->notices().empty());
    EXPECT_EQ(make(record("", "10de", "03:00.0"))->displayName(), "GRAPHICS_CARD");
}

TEST_F(DeviceTest, TellsWhetherItsIdentityIsComplete) {
    const auto statusOf = [&](const std::string& location) {
        return identify(record("A", "10DE", location), strings_, numbers_).status;
    };
    EXPECT_EQ(statusOf("03:00.0"), 0);
    EXPECT_EQ(statusOf("03:0"), 39);
    EXPECT_EQ(statusOf("03:00."), 39);
    EXPECT_EQ(statusOf("03:0x.0"), 39);
}

TEST_F(DeviceTest, ListsItsRowsInOrder) {
    auto adapter = record("?", "1002", "03:00.0");
    adapter.driverVersion = "31.0.1";
    const auto device = make(adapter);
    device->setDirect3D(context(0x1002, 0x73DF, SIZE_T{12272} << 20));
    device->addDirect3DRows();
    EXPECT_EQ(
        keysOf(device->rows()),
        (std::vector<std::string>{"UDI", "VENDOR_ID", "DEVICE_ID", "LOCATION", "DRIVER_VERSION",
                                  "DIRECTX_VENDOR_ID", "DIRECTX_DEVICE_ID", "DIRECTX_VIDEO_CARD_MEMORY"}));
    EXPECT_EQ(device->rows()[4].second, "31.0.1");
}

TEST_F(DeviceTest, WritesDirect3DIdsInUpperCaseWithoutLeadingZerosAndMemoryInMegabytes) {
    const auto device = make(record("A", "10DE", "03:00.0"));
    device->setDirect3D(context(0x10DE, 0x00AB, (SIZE_T{3} << 20) + 1048575));
    device->addDirect3DRows();
    const auto rows = device->rows();
    ASSERT_EQ(rows.size(), 5U);
    EXPECT_EQ(rows[2], core::KeyValue("DIRECTX_VENDOR_ID", "10DE"));
    EXPECT_EQ(rows[3], core::KeyValue("DIRECTX_DEVICE_ID", "AB"));
    EXPECT_EQ(rows[4], core::KeyValue("DIRECTX_VIDEO_CARD_MEMORY", "3 MB"));
}

TEST_F(DeviceTest, AddsNoDirect3DRowsWithoutARecord) {
    const auto device = make(record("A", "10DE", "03:00.0"));
    device->addDirect3DRows();
    EXPECT_EQ(device->rows().size(), 2U);
    EXPECT_EQ(device->lock().slot(), nullptr);
}

TEST_F(DeviceTest, NoticesADriverThatIsTooOldForNvidiaCardsOnly) {
    const std::vector<std::string> notice = {"CUDA_DRIVER_OUT_TO_DATE"};
    EXPECT_EQ(make(record("A", "10DE", "03:00.0"), 11020)->notices(), notice);
    EXPECT_EQ(make(record("A", "10DE", "03:00.0"), 0)->notices(), notice);
    EXPECT_TRUE(make(record("A", "10DE", "03:00.0"), 11030)->notices().empty());
    EXPECT_TRUE(make(record("A", "1002", "03:00.0"), 0)->notices().empty());
}

TEST_F(DeviceTest, KeepsItsCudaRecordBesideTheNotice) {
    const auto device = make(record("A", "10DE", "03:00.0"), 11020);
    EXPECT_EQ(device->cudaRecord(), nullptr);
    device->setCuda({"03:00.0", 2});
    ASSERT_NE(device->cudaRecord(), nullptr);
    EXPECT_EQ(device->cudaRecord()->index, 2);
}

TEST_F(DeviceTest, HasNoPropertiesAndIsAlwaysPresent) {
    const auto device = make(record("A", "10DE", "03:00.0"));
    device->refresh();
    EXPECT_TRUE(device->properties().empty());
    EXPECT_TRUE(device->isPresent());
}

TEST_F(DeviceTest, LetsOneHolderOfItsLockAtATimeIn) {
    const auto device = make(record("A", "10DE", "03:00.0"));
    std::future<void> second;
    {
        const auto lock = device->lock();
        second = std::async(std::launch::async, [&] { const auto mine = device->lock(); });
        EXPECT_EQ(second.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    }
    EXPECT_EQ(second.wait_for(std::chrono::seconds(10)), std::future_status::ready);
}

TEST_F(DeviceTest, IsGivenItsDirect3DUnderItsLock) {
    const auto device = make(record("A", "10DE", "03:00.0"));
    std::future<void> attaching;
    {
        const auto lock = device->lock();
        attaching = std::async(std::launch::async, [&] { device->setDirect3D(context(1, 2, 3)); });
        EXPECT_EQ(attaching.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
        EXPECT_EQ(lock.slot(), nullptr);
    }
    ASSERT_EQ(attaching.wait_for(std::chrono::seconds(10)), std::future_status::ready);
    EXPECT_NE(device->lock().slot(), nullptr);
}

TEST_F(DeviceTest, AddsItsDirect3DRowsUnderItsLock) {
    const auto device = make(record("A", "10DE", "03:00.0"));
    device->setDirect3D(context(1, 2, 3));
    std::future<void> adding;
    {
        const auto lock = device->lock();
        adding = std::async(std::launch::async, [&] { device->addDirect3DRows(); });
        EXPECT_EQ(adding.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    }
    ASSERT_EQ(adding.wait_for(std::chrono::seconds(10)), std::future_status::ready);
    EXPECT_EQ(device->rows().size(), 5U);
}

TEST_F(DeviceTest, HasACopyOfTheContextThatItWasGivenLast) {
    const auto device = make(record("A", "10DE", "03:00.0"));
    EXPECT_EQ(device->dx11Context().device, nullptr);
    auto given = context(1, 2, 3);
    device->setDirect3D(given);
    given.adapterInfo.desc.VendorId = 9;
    EXPECT_EQ(device->dx11Context().adapterInfo.desc.VendorId, 1U);
    device->setDirect3D(given);
    EXPECT_EQ(device->dx11Context().adapterInfo.desc.VendorId, 9U);
    EXPECT_EQ(device->lock().slot()->adapterInfo.desc.VendorId, 9U);
}

TEST_F(DeviceTest, WritesItsDirect3DRowsTheSameInEveryLocale) {
    const tests::GroupingLocale locale;
    const auto device = make(record("A", "10DE", "03:00.0"));
    device->setDirect3D(context(0x10DE, 0x2503, SIZE_T{12288} << 20));
    device->addDirect3DRows();
    EXPECT_EQ(device->rows()[2].second, "10DE");
    EXPECT_EQ(device->rows()[3].second, "2503");
    EXPECT_EQ(device->rows()[4].second, "12288 MB");
}

TEST_F(DeviceTest, HandsOutItsAdapterRecord) {
    auto adapter = record("A", "10DE", "03:00.0");
    adapter.adapterLuids = {7};
    const auto device = make(adapter);
    adapter.adapterLuids.clear();
    EXPECT_EQ(device->adapter().location, "03:00.0");
    EXPECT_EQ(device->adapter().adapterLuids, std::vector<std::uint64_t>{7});
}

TEST_F(DeviceTest, KeepsTheLastOfTwoCudaRecords) {
    const auto device = make(record("A", "10DE", "03:00.0"));
    device->setCuda({"03:00.0", 1});
    device->setCuda({"03:00.0", 4});
    EXPECT_EQ(device->cudaRecord()->index, 4);
}

TEST_F(DeviceTest, AnswersLiveValuesThroughItsStatistics) {
    class Source final : public VideoCardStatistics {
    public:
        VideoCardStatisticsStatus usage = VideoCardStatisticsStatus::Unavailable;

        [[nodiscard]] bool matches(const AdapterRecord&) const override { return true; }
        VideoCardStatisticsStatus getTemperature(std::int64_t& value) override {
            value = 45;
            return VideoCardStatisticsStatus::Ok;
        }
        VideoCardStatisticsStatus getUsage(std::uint64_t& value) override {
            value = 7;
            return usage;
        }
        VideoCardStatisticsStatus getTotalMemory(std::uint64_t&) override {
            return VideoCardStatisticsStatus::Unavailable;
        }
        VideoCardStatisticsStatus getFreeMemory(std::uint64_t& value) override {
            value = 1;
            return VideoCardStatisticsStatus::Ok;
        }
    };
    const auto device = make(record("A", "10DE", "03:00.0"));
    std::int64_t temperature = 0;
    std::uint64_t value = 0;
    EXPECT_FALSE(device->getTemperature(temperature));
    EXPECT_FALSE(device->getUsage(value));
    EXPECT_FALSE(device->getFreeMemory(value));
    auto owned = std::make_unique<Source>();
    auto& source = *owned;
    device->setStatistics(std::move(owned));
    EXPECT_TRUE(device->getTemperature(temperature));
    EXPECT_EQ(temperature, 45);
    EXPECT_FALSE(device->getUsage(value)) << "written, but not for sure";
    source.usage = VideoCardStatisticsStatus::Ok;
    EXPECT_TRUE(device->getUsage(value));
    EXPECT_EQ(value, 7U);
    EXPECT_TRUE(device->getFreeMemory(value));
    EXPECT_EQ(value, 1U);
}

TEST_F(DeviceTest, LetsGoOfTheStatisticsThatItHeldBefore) {
    class Source final : public VideoCardStatistics {
    public:
        explicit Source(std::shared_ptr<int> token) : token_(std::move(token)) {}
        [[nodiscard]] bool matches(const AdapterRecord&) const override { return true; }
        VideoCardStatisticsStatus getTemperature(std::int64_t&) override { return {}; }
        VideoCardStatisticsStatus getUsage(std::uint64_t&) override { return {}; }
        VideoCardStatisticsStatus getTotalMemory(std::uint64_t&) override { return {}; }
        VideoCardStatisticsStatus getFreeMemory(std::uint64_t&) override { return {}; }

    private:
        std::shared_ptr<int> token_;
    };
    const auto first = std::make_shared<int>();
    const auto second = std::make_shared<int>();
    {
        const auto device = make(record("A", "10DE", "03:00.0"));
        device->setStatistics(std::make_unique<Source>(first));
        device->setStatistics(std::make_unique<Source>(second));
        EXPECT_EQ(first.use_count(), 1);
        EXPECT_EQ(second.use_count(), 2);
    }
    EXPECT_EQ(second.use_count(), 1) << "the device takes its statistics with it";
}

} // namespace
} // namespace vexil::module::video_card
