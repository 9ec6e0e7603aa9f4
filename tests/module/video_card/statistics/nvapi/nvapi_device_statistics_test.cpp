#include "module/video_card/statistics/nvapi/nvapi_device_statistics.h"

#include "module/video_card/adapter_record.h"
#include "nvapi_loader.h"
#include "platform/library_names.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <memory>

namespace vexil::tests {
namespace {

using namespace module::video_card;
namespace nvapi = platform::nvapi;
using Status = VideoCardStatisticsStatus;

nvapi::ThermalSettings thermal(std::uint32_t count, std::initializer_list<std::int32_t> celsius) {
    nvapi::ThermalSettings settings{};
    settings.count = count;
    std::size_t place = 0;
    for (const auto value : celsius) {
        settings.sensors[place++].currentTemperature = value;
    }
    return settings;
}

TEST(NvapiLocation, IsBusAndSlotInLowerCaseHexadecimal) {
    EXPECT_EQ(nvapiLocation(1, 0), "01:00");
    EXPECT_EQ(nvapiLocation(10, 31), "0a:1f");
    EXPECT_EQ(nvapiLocation(0x123, 0xFFFFFFFF), "123:ffffffff") << "padded, never cut";
}

TEST(NvapiTemperature, IsTheMeanOfTheSensorsTruncatedTowardZero) {
    EXPECT_EQ(meanTemperature(thermal(3, {40, 41, 43})), 41);
    EXPECT_EQ(meanTemperature(thermal(3, {-40, -41, -43})), -41);
    EXPECT_EQ(meanTemperature(thermal(1, {45, 99, 99})), 45) << "only the first count sensors";
    EXPECT_EQ(meanTemperature(thermal(2, {45, 46, 99})), 45);
}

TEST(NvapiTemperature, IsTheLeastIntegerForACountOfZero) {
    EXPECT_EQ(meanTemperature(thermal(0, {40})), std::numeric_limits<std::int64_t>::min());
}

TEST(NvapiTemperature, DividesByTheCountAsItWasGiven) {
    EXPECT_EQ(meanTemperature(thermal(4, {40, 40, 40})), 30)
        << "a fourth sensor that the record has no room for";
    EXPECT_EQ(meanTemperature(thermal(0xFFFFFFFF, {40, 40, 40})), 0);
}

TEST(NvapiTemperature, AddsWithoutOverflow) {
    constexpr auto most = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(meanTemperature(thermal(3, {most, most, most})), most);
}

TEST(NvapiMemory, IsShiftedIn32Bits) {
    EXPECT_EQ(bytesOfKib(6'000'000), 1'849'032'704ULL);
    EXPECT_EQ(bytesOfKib(4 * 1024 * 1024), 0ULL) << "4 GiB";
    EXPECT_EQ(bytesOfKib(4 * 1024 * 1024 - 1), 0xFFFFFC00ULL) << "zero-extended";
    EXPECT_EQ(bytesOfKib(1), 1024ULL);
}

class NvapiSource : public testing::Test {
protected:
    std::unique_ptr<NvapiDeviceStatistics> make(const std::string& location = "01:00") {
        std::array<nvapi::GpuHandle, 64> gpus{};
        std::uint32_t count = 0;
        if (nvidia_.access.initialize() == nvapi::ok) {
            nvidia_.access.enumPhysicalGpus(gpus, count);
            nvidia_.access.unload();
        }
        nvidia_.loader.events.clear();
        return std::make_unique<NvapiDeviceStatistics>(gpus[0], location, nvidia_.runtime);
    }
    void put(const simulated::NvapiCardSection& gpu) { simulated::setNvapiMachine({{}, {gpu}}); }
    /// The statuses of the four queries, with what they left in an out value that was 77 before.
    struct Answers {
        Status temperature, usage, total, free;
        std::int64_t celsius = 77;
        std::uint64_t percent = 77, totalBytes = 77, freeBytes = 77;
    };
    static Answers ask(VideoCardStatistics& source) {
        Answers answers{};
        answers.temperature = source.getTemperature(answers.celsius);
        answers.usage = source.getUsage(answers.percent);
        answers.total = source.getTotalMemory(answers.totalBytes);
        answers.free = source.getFreeMemory(answers.freeBytes);
        return answers;
    }

    NvapiFixture nvidia_;
    const std::string first_ = platform::nvapiLibrary();
    const std::string older_ = platform::nvapiOlderLibrary();
};

TEST_F(NvapiSource, AnswersAllFourQuestions) {
    put(healthyGpu());
    const auto source = make();
    const auto answers = ask(*source);
    EXPECT_EQ(answers.temperature, Status::Ok);
    EXPECT_EQ(answers.celsius, 45);
    EXPECT_EQ(answers.usage, Status::Ok);
    EXPECT_EQ(answers.percent, 7U);
    EXPECT_EQ(answers.total, Status::Ok);
    EXPECT_EQ(answers.totalBytes, 2048U * 1024U);
    EXPECT_EQ(answers.free, Status::Ok);
    EXPECT_EQ(answers.freeBytes, 1024U * 1024U);
}

TEST_F(NvapiSource, TakesAReferenceAndTheLibraryAndGivesThemBackInTurn) {
    put(healthyGpu());
    auto source = make();
    EXPECT_EQ(nvidia_.loader.events, (Events{"load the driver's", "initialize", "load " + first_}));
    EXPECT_EQ(nvidia_.loader.flags, 1U);
    nvidia_.loader.events.clear();
    source.reset();
    EXPECT_EQ(nvidia_.loader.events, (Events{"release", "unload", "release"}))
        << "its own library, the reference, and with it the access layer's library";
}

TEST_F(NvapiSource, ThrowsTheStatusOfARefusedReferenceAsAnInteger) {
    nvidia_.loader.initializeStatus = -6;
    try {
        make();
        FAIL() << "nothing thrown";
    } catch (int status) {
        EXPECT_EQ(status, -6);
    }
    EXPECT_EQ(nvidia_.loader.count("load " + first_), 0);
}

TEST_F(NvapiSource, ThrowsTheTextWithoutTheLibraryAndLeavesTheOlderOneLoaded) {
    put(healthyGpu());
    nvidia_.loader.missingLibraries = {first_};
    try {
        make();
        FAIL() << "nothing thrown";
    } catch (const std::string& text) {
        EXPECT_EQ(text, "Error loading nvapi dynamic library.");
    }
    EXPECT_EQ(nvidia_.loader.events, (Events{"load the driver's", "initialize", "miss " + first_,
                                             "load " + older_, "unload", "release"}))
        << "one release, of the access layer's library: the older one is never given back";
    EXPECT_EQ(nvidia_.loader.flags, 1U) << "the older one is searched for in the same way";
}

TEST_F(NvapiSource, ThrowsTheTextWithNeitherLibrary) {
    nvidia_.loader.missingLibraries = {first_, older_};
    EXPECT_THROW(make(), std::string);
}

TEST_F(NvapiSource, ThrowsTheTextWithoutTheUsageFunctionAndGivesBackWhatItTook) {
    put(healthyGpu());
    nvidia_.loader.replacements[nvapi::id::getUsage] = nullptr;
    EXPECT_THROW(make(), std::string);
    EXPECT_EQ(nvidia_.loader.count("release"), 2) << "its own library and the access layer's";
    EXPECT_EQ(nvidia_.access.unload(), -4) << "no reference is left";
}

TEST_F(NvapiSource, ThrowsTheTextWithoutTheQueryFunction) {
    put(healthyGpu());
    ASSERT_EQ(nvidia_.access.initialize(), 0);
    nvidia_.loader.exportsQuery = false;
    EXPECT_THROW(NvapiDeviceStatistics(nullptr, "01:00", nvidia_.runtime), std::string);
    EXPECT_EQ(nvidia_.access.unload(), 0);
    EXPECT_EQ(nvidia_.access.unload(), -4);
}

TEST_F(NvapiSource, MatchesEveryFunctionOfItsBusAndSlot) {
    put(healthyGpu());
    const auto source = make("0a:00");
    AdapterRecord adapter;
    for (const auto& [location, matches] : {std::pair{"0a:00.0", true},
                                            {"0a:00.1", true},
                                            {"0a:01.0", false},
                                            {"0A:00.0", false},
                                            {"0a:0", false},
                                            {"", false},
                                            {"0a:00", true}}) {
        adapter.location = location;
        EXPECT_EQ(source->matches(adapter), matches) << location;
    }
}

TEST_F(NvapiSource, IsUnavailableOnAnyStatusButZero) {
    const auto source = [&] {
        put(healthyGpu());
        return make();
    }();
    for (const std::int32_t status : {-1, 1, -209, std::numeric_limits<std::int32_t>::min()}) {
        auto gpu = healthyGpu();
        gpu.statuses = {
            {"NvAPI_GPU_GetThermalSettings", status}, {"NvAPI_GPU_GetMemoryInfo", status}, {"usage", status}};
        put(gpu);
        const auto answers = ask(*source);
        EXPECT_EQ(answers.temperature, Status::Unavailable) << status;
        EXPECT_EQ(answers.usage, Status::Unavailable) << status;
        EXPECT_EQ(answers.total, Status::Unavailable) << status;
        EXPECT_EQ(answers.free, Status::Unavailable) << status;
    }
    put(healthyGpu());
    EXPECT_EQ(ask(*source).temperature, Status::Ok) << "a failure is not remembered";
}

TEST_F(NvapiSource, GivesTheMemoryOfACardOfSixGigabytesModulo32Bits) {
    auto gpu = healthyGpu();
    gpu.totalKib = 6'291'456;
    gpu.freeKib = 6'000'000;
    put(gpu);
    const auto answers = ask(*make());
    EXPECT_EQ(answers.total, Status::Ok);
    EXPECT_EQ(answers.totalBytes, 2ULL << 30);
    EXPECT_EQ(answers.free, Status::Ok);
    EXPECT_EQ(answers.freeBytes, 1'849'032'704ULL);
}

TEST_F(NvapiSource, GivesTheLeastTemperatureWithOkForACountOfZero) {
    auto gpu = healthyGpu();
    gpu.sensorCount = 0;
    put(gpu);
    const auto answers = ask(*make());
    EXPECT_EQ(answers.temperature, Status::Ok);
    EXPECT_EQ(answers.celsius, std::numeric_limits<std::int64_t>::min());
}

TEST_F(NvapiSource, ZeroExtendsTheLoad) {
    auto gpu = healthyGpu();
    gpu.usagePercent = 0xFFFFFFFF;
    put(gpu);
    EXPECT_EQ(ask(*make()).percent, 0xFFFFFFFFULL);
}

bool restIsZero(const void* record, std::size_t size) {
    const auto* bytes = static_cast<const unsigned char*>(record);
    return std::all_of(bytes + 4, bytes + size, [](unsigned char byte) { return byte == 0; });
}

struct Sent {
    std::uint32_t version = 0;
    std::uint32_t sensor = 0;
    bool zeroed = false;
};
Sent sent;

nvapi::Status lookAtThermalSettings(nvapi::GpuHandle, std::uint32_t sensor,
                                    nvapi::ThermalSettings* settings) {
    sent = {settings->version, sensor, restIsZero(settings, 68)};
    return nvapi::ok;
}
nvapi::Status lookAtMemoryInfo(nvapi::GpuHandle, nvapi::MemoryInfo* info) {
    sent = {info->version, 0, restIsZero(info, 32)};
    return nvapi::ok;
}
nvapi::Status lookAtUsage(nvapi::GpuHandle, nvapi::Usage* usage) {
    sent = {usage->version, 0, restIsZero(usage, 136)};
    // The word at offset 12, by hand.
    const std::uint32_t load = 63;
    std::memcpy(reinterpret_cast<char*>(usage) + 12, &load, sizeof(load));
    return nvapi::ok;
}

TEST_F(NvapiSource, SendsEachRecordWithItsVersionAndZeroes) {
    put(healthyGpu());
    nvidia_.loader.replacements = {{nvapi::id::getThermalSettings, addressOf(lookAtThermalSettings)},
                                   {nvapi::id::getMemoryInfo, addressOf(lookAtMemoryInfo)},
                                   {nvapi::id::getUsage, addressOf(lookAtUsage)}};
    const auto source = make();
    std::int64_t celsius = 0;
    source->getTemperature(celsius);
    EXPECT_EQ(sent.version, 0x00020044U);
    EXPECT_EQ(sent.sensor, 15U);
    EXPECT_TRUE(sent.zeroed);
    std::uint64_t value = 0;
    source->getTotalMemory(value);
    EXPECT_EQ(sent.version, 0x00030020U);
    EXPECT_TRUE(sent.zeroed);
    sent = {};
    source->getFreeMemory(value);
    EXPECT_EQ(sent.version, 0x00030020U);
    EXPECT_TRUE(sent.zeroed);
    source->getUsage(value);
    EXPECT_EQ(sent.version, 0x00010088U);
    EXPECT_TRUE(sent.zeroed);
    EXPECT_EQ(value, 63U);
}

} // namespace
} // namespace vexil::tests
