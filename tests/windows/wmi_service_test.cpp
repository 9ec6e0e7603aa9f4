#include "platform/windows/cim/win_cim.h"
#include "system/cim/wmi_query.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <regex>
#include <string>
#include <thread>
#include <vector>

// The clients against the WMI service of the machine that the tests run on.
namespace {

using vexil::system::Cim;
using vexil::system::CimRows;
using vexil::system::CimStatus;
using vexil::system::machineNamespace;
using vexil::system::WmiQuery;

const std::regex caption(R"(\w+ Family \d+ Model \d+ Stepping \d+)");

std::vector<std::string> firstRow(Cim& cim, CimRows& rows) {
    std::vector<std::string> texts;
    if (rows != nullptr) {
        texts.assign(rows->front()->begin(), rows->front()->end());
    }
    cim.freeRows(&rows);
    return texts;
}

int queryProcessor(std::vector<std::string>& texts) {
    const auto cim = vexil::system::makeCim();
    const char* properties[] = {"Caption", "Manufacturer"};
    CimRows rows = nullptr;
    const auto status = cim->query(properties, "Win32_Processor", 2, rows, machineNamespace);
    texts = firstRow(*cim, rows);
    return static_cast<int>(status);
}

/// Each test has a thread of its own, hence COM in the state that the test gives it.
template <typename Body>
void onAThread(const Body& body) {
    std::thread(body).join();
}

bool comIsRunning() {
    APTTYPE type;
    APTTYPEQUALIFIER qualifier;
    return CoGetApartmentType(&type, &qualifier) == S_OK && qualifier != APTTYPEQUALIFIER_IMPLICIT_MTA;
}

TEST(WmiService, TellsTheProcessor) {
    onAThread([] {
        std::vector<std::string> texts;
        EXPECT_EQ(queryProcessor(texts), 0);
        ASSERT_EQ(texts.size(), 2U);
        EXPECT_TRUE(std::regex_match(texts[0], caption)) << texts[0];
        EXPECT_FALSE(comIsRunning());
    });
}

TEST(WmiService, AnswersAThreadInMultiThreadedModeAndLeavesItsReference) {
    onAThread([] {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
        std::vector<std::string> texts;
        EXPECT_EQ(queryProcessor(texts), 0);
        EXPECT_EQ(texts.size(), 2U);
        EXPECT_TRUE(comIsRunning());
        CoUninitialize();
        EXPECT_FALSE(comIsRunning()) << "one reference was there, and one was given back";
    });
}

TEST(WmiService, AnswersAThreadInApartmentModeAndLeavesItsReference) {
    onAThread([] {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
        std::vector<std::string> texts;
        EXPECT_EQ(queryProcessor(texts), 0);
        EXPECT_TRUE(comIsRunning());
        CoUninitialize();
        EXPECT_FALSE(comIsRunning());
    });
}

/// One after the other: Wine's own service can hang when several threads start it at once.
TEST(WmiService, AnswersOneThreadAfterTheOther) {
    for (int i = 0; i < 4; ++i) {
        std::thread([] {
            std::vector<std::string> texts;
            EXPECT_EQ(queryProcessor(texts), 0);
            EXPECT_EQ(texts.size(), 2U);
        }).join();
    }
}

TEST(WmiService, AnswersNullRowsWhereNothingMatches) {
    onAThread([] {
        const auto cim = vexil::system::makeCim();
        const char* properties[] = {"Caption"};
        CimRows rows = nullptr;
        EXPECT_EQ(cim->queryWhere(properties, "Manufacturer = 'Nobody'", "Win32_Processor", 1, rows,
                                  machineNamespace),
                  CimStatus::Success);
        EXPECT_EQ(rows, nullptr);
    });
}

TEST(WmiService, DoesNotKnowAnotherNamespaceOrClass) {
    onAThread([] {
        const auto cim = vexil::system::makeCim();
        const char* properties[] = {"Caption"};
        CimRows rows = nullptr;
        EXPECT_EQ(static_cast<int>(cim->query(properties, "Win32_Processor", 1, rows, L"ROOT\\Nowhere")), 19);
        EXPECT_EQ(static_cast<int>(cim->queryWhere(properties, "not a clause", "Win32_Processor", 1, rows,
                                                   machineNamespace)),
                  21);
        EXPECT_EQ(rows, nullptr);
    });
}

TEST(WmiService, FillsTheMapOfAWmiQuery) {
    onAThread([] {
        WmiQuery query;
        const char* properties[] = {"Caption", "NumberOfLogicalProcessors"};
        std::map<std::string, std::string> values;
        EXPECT_EQ(query.query(properties, nullptr, "Win32_Processor", 2, values, machineNamespace),
                  CimStatus::Success);
        EXPECT_TRUE(std::regex_match(values["Caption"], caption)) << values["Caption"];
        EXPECT_GT(std::stoi(values["NumberOfLogicalProcessors"]), 0);
        EXPECT_TRUE(comIsRunning()) << "the object holds COM until its end";
    });
}

TEST(WmiService, IsLeftByAWmiQueryThatEnds) {
    onAThread([] {
        {
            WmiQuery query;
            const char* properties[] = {"Caption"};
            std::map<std::string, std::string> values;
            query.query(properties, nullptr, "Win32_Processor", 1, values, machineNamespace);
        }
        EXPECT_FALSE(comIsRunning());
    });
}

} // namespace
