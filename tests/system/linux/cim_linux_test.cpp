#include "platform/linux/cim/cim_linux.h"
#include "platform/linux/cim/machine_objects.h"
#include "support/recorded_tree.h"
#include "system/cim/wmi_query.h"

#include <gtest/gtest.h>

#include <filesystem>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using vexil::platform::answerWmiQuery;
using vexil::platform::LinuxCim;
using vexil::system::CimRows;
using vexil::system::machineNamespace;
using vexil::system::QueryArguments;
using vexil::system::WhereClause;
using vexil::tests::RecordedTree;

using Rows = std::vector<std::vector<std::string>>;
using Values = std::map<std::string, std::string>;

class LinuxCimTest : public testing::Test {
protected:
    int query(const std::vector<const char*>& properties, const char* className,
              const wchar_t* nameSpace = machineNamespace) {
        CimRows rows = nullptr;
        const auto status = cim_.query(properties.data(), className,
                                       static_cast<std::int32_t>(properties.size()), rows, nameSpace);
        return keep(rows, static_cast<int>(status));
    }
    int queryWhere(const std::vector<const char*>& properties, const char* where, const char* className) {
        CimRows rows = nullptr;
        const auto status =
            cim_.queryWhere(properties.data(), where, className, static_cast<std::int32_t>(properties.size()),
                            rows, machineNamespace);
        return keep(rows, static_cast<int>(status));
    }

    RecordedTree tree_{std::string(VEXIL_TEST_DATA) + "/intel_nvidia_desktop.tree"};
    LinuxCim cim_{tree_.root(), tree_.root() / "state/cim.sqlite3"};
    Rows rows_;
    bool isNull_ = false;

private:
    int keep(CimRows rows, int status) {
        isNull_ = rows == nullptr;
        rows_.clear();
        for (std::size_t i = 0; rows != nullptr && i < rows->size(); ++i) {
            rows_.emplace_back(rows->at(i)->begin(), rows->at(i)->end());
        }
        cim_.freeRows(&rows);
        return status;
    }
};

TEST_F(LinuxCimTest, AnswersTheProcessorsCaption) {
    EXPECT_EQ(query({"Caption"}, "Win32_Processor"), 0);
    EXPECT_EQ(rows_, (Rows{{"Intel64 Family 6 Model 167 Stepping 1"}}));
}

TEST_F(LinuxCimTest, AnswersPropertiesInTheOrderOfTheRequest) {
    EXPECT_EQ(query({"NumberOfCores", "Manufacturer"}, "Win32_Processor"), 0);
    EXPECT_EQ(rows_, (Rows{{"8", "GenuineIntel"}}));
}

TEST_F(LinuxCimTest, AnswersTheDriverOfTheCardOfAMaker) {
    EXPECT_EQ(
        queryWhere({"DriverVersion"}, "DriverProviderName = 'NVIDIA Corporation'", "Win32_PnPSignedDriver"),
        0);
    EXPECT_EQ(rows_, Rows{{"535.183.01"}});
}

TEST_F(LinuxCimTest, AnswersAllDisplayDriversByAddress) {
    EXPECT_EQ(queryWhere({"DriverVersion"}, "DeviceClass = 'DISPLAY'", "Win32_PnPSignedDriver"), 0);
    EXPECT_EQ(rows_, (Rows{{"6.1.0-28-amd64"}, {"535.183.01"}}));
}

TEST_F(LinuxCimTest, AnswersVideoControllers) {
    EXPECT_EQ(query({"Name"}, "Win32_VideoController"), 0);
    EXPECT_EQ(rows_, (Rows{{"RocketLake-S GT1 [UHD Graphics 750]"}, {"GP106 [GeForce GTX 1060 6GB]"}}));
}

TEST_F(LinuxCimTest, ReadsNamesInBothCases) {
    EXPECT_EQ(queryWhere({"DRIVERVERSION"}, "deviceclass = 'Display'", "win32_pnpsigneddriver"), 0);
    EXPECT_EQ(rows_.size(), 2U);
    EXPECT_EQ(query({"Caption"}, "Win32_Processor", L"root/cimv2"), 0);
}

TEST_F(LinuxCimTest, AnswersSuccessAndNullRowsWhereNothingMatches) {
    EXPECT_EQ(queryWhere({"DriverVersion"}, "DriverProviderName = 'Nobody'", "Win32_PnPSignedDriver"), 0);
    EXPECT_TRUE(isNull_);
}

TEST_F(LinuxCimTest, ComparesAnEmptyValueWithNothing) {
    tree_.remove("proc/sys/kernel/osrelease");
    EXPECT_EQ(queryWhere({"DriverName"}, "DriverVersion = ''", "Win32_PnPSignedDriver"), 0);
    EXPECT_TRUE(isNull_);
}

TEST_F(LinuxCimTest, AnswersAnEmptyTextForAnEmptyValue) {
    tree_.remove("proc/sys/kernel/osrelease");
    EXPECT_EQ(queryWhere({"DriverName", "DriverVersion"}, "DriverName = 'i915'", "Win32_PnPSignedDriver"), 0);
    EXPECT_EQ(rows_, (Rows{{"i915", ""}}));
}

TEST_F(LinuxCimTest, DoesNotKnowAnotherNamespace) {
    EXPECT_EQ(query({"Caption"}, "Win32_Processor", L"ROOT\\Nowhere"), 19);
    EXPECT_EQ(query({"Caption"}, "Win32_Processor", L"ROOT\\CIMV2\\More"), 19);
    EXPECT_EQ(query({"Caption"}, "Win32_Processor", L""), 19);
    EXPECT_EQ(query({"Caption"}, "Win32_Processor", nullptr), 19);
    EXPECT_TRUE(isNull_);
}

TEST_F(LinuxCimTest, DoesNotKnowAnotherClass) { EXPECT_EQ(query({"Caption"}, "Win32_Toaster"), 21); }

TEST_F(LinuxCimTest, DoesNotUnderstandAnotherClause) {
    EXPECT_EQ(queryWhere({"DriverVersion"}, "DeviceClass <> 'DISPLAY'", "Win32_PnPSignedDriver"), 21);
    EXPECT_EQ(queryWhere({"DriverVersion"}, "DriverProviderName = 'O'Neil'", "Win32_PnPSignedDriver"), 21);
    EXPECT_EQ(queryWhere({"DriverVersion"}, "Colour = 'red'", "Win32_PnPSignedDriver"), 21);
    EXPECT_EQ(queryWhere({"DriverVersion"}, "", "Win32_PnPSignedDriver"), 21);
}

TEST_F(LinuxCimTest, FreesTheRowsIfAPropertyCannotBeRead) {
    EXPECT_EQ(query({"Caption", "Colour"}, "Win32_Processor"), 23);
    EXPECT_TRUE(isNull_);
}

TEST_F(LinuxCimTest, ChecksTheNamespaceThenTheArgumentsThenTheQuery) {
    CimRows rows = nullptr;
    const char* properties[] = {"Caption", nullptr};
    const auto status = [&](const char* const* names, int count, const char* className,
                            const wchar_t* space) {
        return static_cast<int>(cim_.queryWhere(names, nullptr, className, count, rows, space));
    };
    EXPECT_EQ(status(nullptr, 0, nullptr, L"ROOT\\Nowhere"), 19);
    EXPECT_EQ(status(nullptr, 0, nullptr, machineNamespace), 25);
    EXPECT_EQ(status(properties, 0, nullptr, machineNamespace), 27);
    EXPECT_EQ(status(properties, 2, nullptr, machineNamespace), 29);
    EXPECT_EQ(static_cast<int>(cim_.query(properties, nullptr, 2, rows, machineNamespace)), 25);
    EXPECT_EQ(static_cast<int>(cim_.query(properties, nullptr, 1, rows, machineNamespace)), 26);
}

TEST_F(LinuxCimTest, WritesNoRecordsAmongWhatTheMachineTells) {
    EXPECT_EQ(static_cast<int>(cim_.writeRecord({}, {}, "Class", machineNamespace)), 19);
    EXPECT_EQ(static_cast<int>(cim_.writeRecord({}, {}, "Class", L"ROOT")), 19);
    EXPECT_FALSE(std::filesystem::exists(tree_.root() / "state"));
}

TEST_F(LinuxCimTest, NamesTheNamespacesInTheOutermostOne) {
    EXPECT_EQ(query({"Name"}, "__Namespace", L"ROOT"), 0);
    EXPECT_EQ(rows_, (Rows{{"CIMV2"}}));
    EXPECT_EQ(query({"Name"}, "__namespace", machineNamespace), 0);
    EXPECT_TRUE(isNull_);
    EXPECT_EQ(query({"Caption"}, "Win32_Processor", L"ROOT"), 21) << "the class lies further in";
}

TEST_F(LinuxCimTest, MapsTheLastObjectsValues) {
    const char* properties[] = {"DriverVersion", "DriverName"};
    Values values = {{"Other", "kept"}};
    EXPECT_EQ(static_cast<int>(answerWmiQuery(
                  tree_.root(), {properties, 2, "Win32_PnPSignedDriver", WhereClause::Optional, nullptr},
                  values, machineNamespace)),
              0);
    EXPECT_EQ(values, (Values{{"DriverVersion", "535.183.01"}, {"DriverName", "nvidia"}, {"Other", "kept"}}));
}

TEST_F(LinuxCimTest, MapsWhatCanBeReadAndTellsThatSomethingCannot) {
    const char* properties[] = {"Colour", "DriverName"};
    Values values;
    EXPECT_EQ(static_cast<int>(answerWmiQuery(tree_.root(),
                                              {properties, 2, "Win32_PnPSignedDriver", WhereClause::Optional,
                                               "DriverProviderName = 'Intel Corporation'"},
                                              values, machineNamespace)),
              23);
    EXPECT_EQ(values, (Values{{"DriverName", "i915"}}));
}

TEST(WmiQueryOnThisMachine, AnswersTheProcessor) {
    vexil::system::WmiQuery query;
    const char* properties[] = {"Caption"};
    Values values;
    EXPECT_EQ(
        static_cast<int>(query.query(properties, nullptr, "Win32_Processor", 1, values, machineNamespace)),
        0);
    EXPECT_NE(values["Caption"].find(" Family "), std::string::npos) << values["Caption"];
}

TEST(MakeCim, AnswersForThisMachine) {
    const auto cim = vexil::system::makeCim();
    CimRows rows = nullptr;
    const char* properties[] = {"Caption"};
    EXPECT_EQ(static_cast<int>(cim->query(properties, "Win32_Processor", 1, rows, machineNamespace)), 0);
    ASSERT_NE(rows, nullptr);
    EXPECT_NE(std::string(rows->front()->front()).find(" Model "), std::string::npos);
    cim->freeRows(&rows);
}

} // namespace
