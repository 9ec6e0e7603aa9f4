#include "module/video_card/device.h"
#include "module/video_card/device_scanner.h"
#include "support/fake_machine.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace vexil::module::video_card {
namespace {

using tests::FakeDevice;

class Listener final : public core::DeviceScanListener {
public:
    std::vector<core::DeviceRecord> records;
    int finished = 0;
    std::vector<bool> presence;

    void deviceFound(const core::DeviceRecord& record) override {
        EXPECT_EQ(finished, 0) << "a device after the end of the scan";
        records.push_back(record);
    }
    void scanFinished() override { ++finished; }
    void presenceChecked(bool present) override { presence.push_back(present); }

    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const auto& record : records) {
            result.push_back(record.name);
        }
        return result;
    }
};

class NamedSource final : public VideoCardStatistics {
public:
    NamedSource(std::string location, std::int64_t temperature)
        : location_(std::move(location)), temperature_(temperature) {}

    [[nodiscard]] bool matches(const AdapterRecord& adapter) const override {
        return adapter.location == location_;
    }
    VideoCardStatisticsStatus getTemperature(std::int64_t& celsius) override {
        celsius = temperature_;
        return VideoCardStatisticsStatus::Ok;
    }
    VideoCardStatisticsStatus getUsage(std::uint64_t&) override {
        return VideoCardStatisticsStatus::Unavailable;
    }
    VideoCardStatisticsStatus getTotalMemory(std::uint64_t&) override {
        return VideoCardStatisticsStatus::Unavailable;
    }
    VideoCardStatisticsStatus getFreeMemory(std::uint64_t&) override {
        return VideoCardStatisticsStatus::Unavailable;
    }

private:
    std::string location_;
    std::int64_t temperature_;
};

class DeviceScannerTest : public testing::Test {
protected:
    std::shared_ptr<Listener> scan() {
        auto listener = std::make_shared<Listener>();
        scanner_->scan(listener);
        return listener;
    }
    std::shared_ptr<Device> device(std::size_t index) {
        return std::dynamic_pointer_cast<Device>(scanner_->devices().at(index).lock());
    }
    void card(const std::string& name, unsigned bus, const std::string& vendor = "10DE") {
        machine_.list.devices.push_back(FakeDevice::displayController(name, "maker", vendor, bus));
    }
    static Dx11Context context(std::uint64_t luid, UINT vendor) {
        Dx11Context result;
        result.adapterInfo.desc.AdapterLuid.LowPart = static_cast<DWORD>(luid);
        result.adapterInfo.desc.AdapterLuid.HighPart = static_cast<LONG>(luid >> 32);
        result.adapterInfo.desc.VendorId = vendor;
        return result;
    }

    tests::FakeMachine machine_;
    std::unique_ptr<DeviceScanner> scanner_ = std::make_unique<DeviceScanner>(machine_);
};

TEST_F(DeviceScannerTest, FindsNothingBeforeTheFirstScan) {
    card("A", 1);
    EXPECT_TRUE(scanner_->devices().empty());
    EXPECT_TRUE(scanner_->findDevice("0100").expired());
}

TEST_F(DeviceScannerTest, TellsTheListenerOfTheEndOnceWhereThereIsNoDisplayDevice) {
    const auto listener = scan();
    EXPECT_TRUE(listener->records.empty());
    EXPECT_EQ(listener->finished, 1);
}

TEST_F(DeviceScannerTest, HandsTheListenerARecordOfEachDevice) {
    machine_.cudaVersion = 11020;
    card("GeForce", 1);
    const auto listener = scan();
    ASSERT_EQ(listener->records.size(), 1U);
    const auto& record = listener->records[0];
    EXPECT_EQ(record.id, "0100");
    EXPECT_EQ(record.name, "GeForce");
    EXPECT_EQ(record.udi, device(0)->udi());
    EXPECT_EQ(record.rows, device(0)->rows());
    EXPECT_TRUE(record.properties.empty());
    EXPECT_TRUE(record.children.empty());
    EXPECT_EQ(record.notices, std::vector<std::string>{"CUDA_DRIVER_OUT_TO_DATE"});
    EXPECT_TRUE(record.present);
}

TEST_F(DeviceScannerTest, LetsGoOfTheListenerAtTheEnd) {
    auto listener = std::make_shared<Listener>();
    scanner_->scan(listener);
    EXPECT_EQ(listener.use_count(), 1);
}

TEST_F(DeviceScannerTest, AttachesTheFirstDirect3DContextWithOneOfTheCardsLuids) {
    card("A", 1);
    machine_.list.devices[0].paths = {"p", "q"};
    machine_.luids = {{"p", 7}, {"q", 0x100000008ULL}};
    machine_.contexts = {context(8, 1), context(0x100000008ULL, 2), context(7, 3)};
    scan();
    ASSERT_NE(device(0)->lock().slot(), nullptr);
    EXPECT_EQ(device(0)->dx11Context().adapterInfo.desc.VendorId, 2U);
    EXPECT_EQ(device(0)->rows().back().first, "DIRECTX_VIDEO_CARD_MEMORY");
}

TEST_F(DeviceScannerTest, LeavesACardWithoutAMatchWithoutDirect3D) {
    card("A", 1);
    machine_.contexts = {context(7, 3)};
    const auto listener = scan();
    EXPECT_EQ(device(0)->lock().slot(), nullptr);
    for (const auto& row : listener->records[0].rows) {
        EXPECT_FALSE(row.first.starts_with("DIRECTX_")) << row.first;
    }
}

TEST_F(DeviceScannerTest, LetsTwoCardsShareOneDirect3DContext) {
    card("A", 1);
    card("B", 2);
    machine_.list.devices[0].paths = {"p"};
    machine_.list.devices[1].paths = {"q"};
    machine_.luids = {{"p", 7}, {"q", 7}};
    machine_.contexts = {context(7, 3)};
    scan();
    EXPECT_NE(device(0)->lock().slot(), nullptr);
    EXPECT_NE(device(1)->lock().slot(), nullptr);
}

TEST_F(DeviceScannerTest, AttachesTheCudaRecordWithTheCardsLocation) {
    card("A", 1);
    card("B", 10);
    machine_.cuda = {{"0a:00.0", 0}, {"0a:00.0", 1}, {"01:00.0 ", 2}};
    scan();
    EXPECT_EQ(device(0)->cudaRecord(), nullptr);
    ASSERT_NE(device(1)->cudaRecord(), nullptr);
    EXPECT_EQ(device(1)->cudaRecord()->index, 0);
}

TEST_F(DeviceScannerTest, ComparesTheLocationOfACudaRecordByteForByte) {
    card("A", 10);
    for (const char* other : {"0A:00.0", "0a:00.00", "0a:00", " 0a:00.0", ""}) {
        machine_.cuda = {{other, 0}};
        scan();
        EXPECT_EQ(device(0)->cudaRecord(), nullptr) << other;
    }
}

TEST_F(DeviceScannerTest, GivesTheSecondOfTwoCardsWithOneLocationNoSourceOfTheFirst) {
    card("A", 1);
    card("B", 1);
    machine_.scans.adl = [](StatisticsSources& sources) {
        sources.push_back(std::make_unique<NamedSource>("01:00.0", 40));
    };
    scan();
    std::int64_t temperature = 0;
    EXPECT_TRUE(device(0)->getTemperature(temperature));
    EXPECT_EQ(temperature, 40);
    EXPECT_FALSE(device(1)->getTemperature(temperature));
}

TEST_F(DeviceScannerTest, TakesTheFirstOfTwoSourcesOfOneKind) {
    card("A", 1);
    machine_.scans.nvapi = [](StatisticsSources& sources) {
        sources.push_back(std::make_unique<NamedSource>("01:00.0", 41));
        sources.push_back(std::make_unique<NamedSource>("01:00.0", 42));
    };
    scan();
    std::int64_t temperature = 0;
    EXPECT_TRUE(device(0)->getTemperature(temperature));
    EXPECT_EQ(temperature, 41);
}

/// Tells when it goes.
class MortalSource final : public VideoCardStatistics {
public:
    MortalSource(bool matches, bool& gone) : matches_(matches), gone_(gone) {}
    ~MortalSource() override { gone_ = true; }

    [[nodiscard]] bool matches(const AdapterRecord&) const override { return matches_; }
    VideoCardStatisticsStatus getTemperature(std::int64_t&) override { return unavailable; }
    VideoCardStatisticsStatus getUsage(std::uint64_t&) override { return unavailable; }
    VideoCardStatisticsStatus getTotalMemory(std::uint64_t&) override { return unavailable; }
    VideoCardStatisticsStatus getFreeMemory(std::uint64_t&) override { return unavailable; }

private:
    static constexpr auto unavailable = VideoCardStatisticsStatus::Unavailable;
    bool matches_;
    bool& gone_;
};

TEST_F(DeviceScannerTest, LetsGoOfTheSourcesThatMatchNoDeviceAtTheEndAndOfTheOthersWithTheirDevice) {
    card("Card", 1);
    bool matchingGone = false;
    bool otherGone = false;
    machine_.scans.nvapi = [&](StatisticsSources& sources) {
        sources.push_back(std::make_unique<MortalSource>(false, otherGone));
        sources.push_back(std::make_unique<MortalSource>(true, matchingGone));
    };
    scan();
    EXPECT_TRUE(otherGone);
    EXPECT_FALSE(matchingGone);
    machine_.scans.nvapi = {};
    scan();
    EXPECT_TRUE(matchingGone);
}

TEST_F(DeviceScannerTest, LetsDevicesTakeSourcesInTheOrderOfTheSystemsList) {
    card("First Intel", 0, "8086");
    card("Other", 3);
    card("Second Intel", 2, "8086");
    machine_.scans.intel = [](StatisticsSources& sources) {
        class IntelSource final : public VideoCardStatistics {
            [[nodiscard]] bool matches(const AdapterRecord& adapter) const override {
                return adapter.vendorId == "8086";
            }
            VideoCardStatisticsStatus getTemperature(std::int64_t&) override {
                return VideoCardStatisticsStatus::Ok;
            }
            VideoCardStatisticsStatus getUsage(std::uint64_t&) override { return {}; }
            VideoCardStatisticsStatus getTotalMemory(std::uint64_t&) override { return {}; }
            VideoCardStatisticsStatus getFreeMemory(std::uint64_t&) override { return {}; }
        };
        sources.push_back(std::make_unique<IntelSource>());
    };
    scan();
    std::int64_t celsius = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        const auto each = device(i);
        EXPECT_EQ(each->getTemperature(celsius), each->displayName() == "First Intel") << each->displayName();
    }
}

TEST_F(DeviceScannerTest, PutsIntelCardsLast) {
    card("Intel UHD", 0, "8086");
    card("GeForce", 1);
    EXPECT_EQ(scan()->names(), (std::vector<std::string>{"GeForce", "Intel UHD"}));
}

TEST_F(DeviceScannerTest, SwapsTheFirstIntelCardWithTheLastOther) {
    card("A", 1);
    card("Intel X", 2);
    card("B", 3);
    EXPECT_EQ(scan()->names(), (std::vector<std::string>{"A", "B", "Intel X"}));
    machine_.list.devices.clear();
    card("Intel X", 1);
    card("A", 2);
    card("B", 3);
    EXPECT_EQ(scan()->names(), (std::vector<std::string>{"B", "A", "Intel X"}));
}

TEST_F(DeviceScannerTest, DoesNotCountIntelInLowerCase) {
    card("intel X", 1);
    card("A", 2);
    EXPECT_EQ(scan()->names(), (std::vector<std::string>{"intel X", "A"}));
}

TEST_F(DeviceScannerTest, FindsTheFirstOfTwoDevicesWithOneId) {
    card("A", 1);
    card("B", 1);
    scan();
    EXPECT_EQ(scanner_->devices().size(), 2U);
    EXPECT_EQ(scanner_->findDevice("0100").lock()->displayName(), "A");
    EXPECT_TRUE(scanner_->findDevice("01").expired());
}

TEST_F(DeviceScannerTest, AsksTheSystemListThenDirect3DThenCudaThenTheStatistics) {
    card("A", 1);
    machine_.calls.clear();
    machine_.list.onScan = [&] { machine_.calls.emplace_back("list"); };
    scan();
    EXPECT_EQ(machine_.calls, (std::vector<std::string>{"list", "list", "Direct3D", "CUDA", "statistics"}));
}

TEST_F(DeviceScannerTest, TellsTheStatisticsScansOfTheCardsItFound) {
    card("A", 1);
    card("B", 10);
    scan();
    ASSERT_EQ(machine_.statisticsCards.size(), 2U);
    EXPECT_EQ(machine_.statisticsCards[0].location, "01:00.0");
    EXPECT_EQ(machine_.statisticsCards[1].location, "0a:00.0");
}

TEST_F(DeviceScannerTest, GivesEachCardOneSourceOfEachKind) {
    card("A", 1);
    const auto source = [](std::int64_t temperature) {
        return [temperature](StatisticsSources& sources) {
            sources.push_back(nullptr);
            sources.push_back(std::make_unique<NamedSource>("02:00.0", 99));
            sources.push_back(std::make_unique<NamedSource>("01:00.0", temperature));
        };
    };
    const auto temperature = [&] {
        scan();
        std::int64_t celsius = 0;
        EXPECT_TRUE(device(0)->getTemperature(celsius));
        return celsius;
    };
    machine_.scans.d3dkmt = source(44);
    EXPECT_EQ(temperature(), 44);
    machine_.scans.intel = source(43);
    EXPECT_EQ(temperature(), 43);
    machine_.scans.nvapi = source(42);
    EXPECT_EQ(temperature(), 42);
    machine_.scans.adl = source(41);
    EXPECT_EQ(temperature(), 41);
}

TEST_F(DeviceScannerTest, LetsGoOfItsOldDevicesBeforeItLooksForNewOnes) {
    card("A", 1);
    scan();
    const auto old = scanner_->devices().at(0);
    bool looked = false;
    machine_.list.onScan = [&] {
        looked = true;
        EXPECT_TRUE(old.expired());
    };
    scan();
    EXPECT_TRUE(looked);
}

TEST_F(DeviceScannerTest, LetsGoOfItsDevicesLast) {
    card("A", 1);
    scan();
    const auto last = scanner_->devices().at(0);
    machine_.onRelease = [&] { EXPECT_FALSE(last.expired()) << "the list is given back before"; };
    scanner_.reset();
    EXPECT_EQ(machine_.calls.back(), "release list");
    EXPECT_TRUE(last.expired());
}

TEST_F(DeviceScannerTest, KeepsADeviceThatARunningTestHolds) {
    card("A", 1);
    scan();
    const auto held = scanner_->devices().at(0).lock();
    machine_.list.devices.clear();
    scan();
    EXPECT_TRUE(scanner_->devices().empty());
    EXPECT_EQ(held->id(), "0100");
}

TEST_F(DeviceScannerTest, ComparesIdsInFull) {
    card("A", 1);
    card("B", 10);
    scan();
    EXPECT_EQ(scanner_->findDevice("0a00").lock()->displayName(), "B");
    for (const char* id : {"", "0", "01000", "0A00", "00"}) {
        EXPECT_TRUE(scanner_->findDevice(id).expired()) << id;
    }
}

TEST_F(DeviceScannerTest, ReplacesItsDevicesWithEachScan) {
    card("A", 1);
    scan();
    const auto old = scanner_->devices().at(0);
    const auto held = old.lock();
    scan();
    EXPECT_NE(scanner_->findDevice("0100").lock(), held);
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(DeviceScannerTest, ListsABasicDisplayAdapterLikeAnyCard) {
    card("Microsoft Basic Display Adapter", 1, "1414");
    EXPECT_EQ(scan()->names(), std::vector<std::string>{"Microsoft Basic Display Adapter"});
}

TEST_F(DeviceScannerTest, ListsACardWithAPoorLocation) {
    card("A", 256);
    const auto listener = scan();
    ASSERT_EQ(listener->records.size(), 1U);
    EXPECT_EQ(listener->records[0].rows.size(), 1U) << "the location has 8 characters";
}

TEST_F(DeviceScannerTest, EndsWithAnExceptionOfAStatisticsScan) {
    card("A", 1);
    machine_.scans.intel = [](StatisticsSources&) { throw std::runtime_error("unknown processor"); };
    EXPECT_THROW(scan(), std::runtime_error);
}

TEST_F(DeviceScannerTest, AnswersPresenceWithoutTouchingItsDevices) {
    card("A", 1);
    scan();
    const auto before = scanner_->findDevice("0100").lock();
    const auto listener = std::make_shared<Listener>();
    scanner_->checkPresence(listener);
    machine_.list.devices.clear();
    scanner_->checkPresence(listener);
    EXPECT_EQ(listener->presence, (std::vector<bool>{true, false}));
    EXPECT_TRUE(listener->records.empty());
    EXPECT_EQ(listener->finished, 0);
    EXPECT_EQ(scanner_->findDevice("0100").lock(), before);
}

TEST_F(DeviceScannerTest, GivesBackTheLibraryBeforeTheDeviceList) {
    scanner_.reset();
    EXPECT_EQ(machine_.calls,
              (std::vector<std::string>{"acquire list", "load library", "unload library", "release list"}));
}

TEST_F(DeviceScannerTest, GivesTheDeviceListBackWhenItCannotBeMade) {
    tests::FakeMachine machine;
    machine.loadFails = true;
    EXPECT_THROW(DeviceScanner{machine}, std::runtime_error);
    EXPECT_EQ(machine.calls, (std::vector<std::string>{"acquire list", "load library", "release list"}));
}

TEST_F(DeviceScannerTest, GivesBackNoLibraryThatItDoesNotHave) {
    tests::FakeMachine machine;
    machine.hasKernelGraphics = false;
    { const DeviceScanner scanner(machine); }
    EXPECT_EQ(machine.calls, (std::vector<std::string>{"acquire list", "load library", "release list"}));
}

} // namespace
} // namespace vexil::module::video_card
