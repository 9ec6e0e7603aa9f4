#include "record_folder.h"

#include "system/result_log.h"

#include <string>

namespace {

using vexil::system::CimStatus;
using vexil::tests::RecordFolderTest;

class LinuxRecords : public RecordFolderTest {};

const std::vector<std::string> allNames = {"ModuleName",  "DeviceUdi",  "DeviceDisplayName",
                                           "TestName",    "TestStatus", "TestStartTimestamp",
                                           "TestDuration"};

TEST_F(LinuxRecords, MakeNamespacesAndClassWithTheFirstWhichGetsId0AndTheNextId1) {
    EXPECT_EQ(write(allNames, {"a", "b", "c", "d", "e", "f", "g"}), 0);
    EXPECT_EQ(query({"Name"}, "__Namespace", L"ROOT"), 0);
    EXPECT_EQ(rows_, (Rows{{"CIMV2"}, {"Norvane"}}));
    EXPECT_EQ(query({"Name"}, "__Namespace", L"ROOT\\Norvane"), 0);
    EXPECT_EQ(rows_, (Rows{{"Norvane_Diagnostics"}}));
    EXPECT_EQ(write("second"), 0);
    EXPECT_EQ(query({"Id", "ModuleName", "DeviceUdi", "DeviceDisplayName", "TestName", "TestStatus",
                     "TestStartTimestamp", "TestDuration"}),
              0);
    EXPECT_EQ(rows_,
              (Rows{{"0", "a", "b", "c", "d", "e", "f", "g"}, {"1", "", "", "", "second", "", "", ""}}));
}

TEST_F(LinuxRecords, DeleteId7OfIds7To5006AndGoOnWith5007) {
    fill(7, 5000);
    EXPECT_EQ(write("new"), 0);
    ASSERT_EQ(query({"Id", "TestName"}), 0);
    ASSERT_EQ(rows_.size(), 5000U);
    EXPECT_EQ(rows_.front().at(0), "8");
    EXPECT_EQ(rows_.back(), (std::vector<std::string>{"5007", "new"}));
}

TEST_F(LinuxRecords, NeverUseAnIdAgainWhileALargerOneExists) {
    fill(41, 2);
    EXPECT_EQ(write("new"), 0);
    ASSERT_EQ(query({"Id"}), 0);
    EXPECT_EQ(rows_, (Rows{{"41"}, {"42"}, {"43"}}));
}

TEST_F(LinuxRecords, CannotMakeRoomOnceTheOldestIdLiesAbove5001) {
    fill(5002, 5000);
    EXPECT_EQ(write("new"), 19);
    ASSERT_EQ(query({"Id"}), 0);
    EXPECT_EQ(rows_.size(), 5000U);
    EXPECT_EQ(rows_.front().at(0), "5002");
}

TEST_F(LinuxRecords, OfDifferentNumbersOfNamesAndValuesWriteNothingAndAnswerSuccess) {
    EXPECT_EQ(write({"TestName", "TestStatus"}, {"only"}), 0);
    EXPECT_EQ(query({"Id"}), 0) << "namespaces and class are made all the same";
    EXPECT_TRUE(rows_.empty());
}

TEST_F(LinuxRecords, OfDifferentNumbersOfNamesAndValuesStillPushTheOldestOut) {
    fill(0, 5000);
    EXPECT_EQ(write({"TestName"}, {}), 0);
    ASSERT_EQ(query({"Id"}), 0);
    EXPECT_EQ(rows_.size(), 4999U);
    EXPECT_EQ(rows_.front().at(0), "1");
}

TEST_F(LinuxRecords, PassOverNamesThatTheClassDoesNotKnow) {
    EXPECT_EQ(write({"Colour", "testname", "Id"}, {"red", "lower case", "77"}), 0);
    ASSERT_EQ(query({"Id", "TestName"}), 0);
    EXPECT_EQ(rows_, (Rows{{"0", "lower case"}}));
}

TEST_F(LinuxRecords, KeepTheLastOfTwoValues) {
    EXPECT_EQ(write({"TestName", "TestName"}, {"first", "last"}), 0);
    ASSERT_EQ(query({"TestName"}), 0);
    EXPECT_EQ(rows_, (Rows{{"last"}}));
}

TEST_F(LinuxRecords, KeepQuotesAndLongTextsWhichAreReadCutTo500Characters) {
    const std::string text = "'; DROP TABLE record; --\"\\" + std::string(600, 'x');
    EXPECT_EQ(write(text), 0);
    ASSERT_EQ(query({"TestName"}), 0);
    EXPECT_EQ(rows_.at(0).at(0), text.substr(0, 500));
}

TEST_F(LinuxRecords, CountForEachClassByItself) {
    EXPECT_EQ(write({"TestName"}, {"a"}, "One"), 0);
    EXPECT_EQ(write({"TestName"}, {"b"}, "Other"), 0);
    EXPECT_EQ(write({"TestName"}, {"c"}, "ONE"), 0) << "names of classes have no case";
    ASSERT_EQ(query({"Id", "TestName"}, "One"), 0);
    EXPECT_EQ(rows_, (Rows{{"0", "a"}, {"1", "c"}}));
    ASSERT_EQ(query({"Id"}, "Other"), 0);
    EXPECT_EQ(rows_, (Rows{{"0"}}));
}

TEST_F(LinuxRecords, AreFoundByAClause) {
    write("one");
    write("two");
    vexil::system::CimRows rows = nullptr;
    const char* properties[] = {"Id"};
    ASSERT_EQ(static_cast<int>(cim_.queryWhere(properties, "TestName = 'two'", "TestResult", 1, rows,
                                               vexil::system::recordNamespace)),
              0);
    ASSERT_NE(rows, nullptr);
    ASSERT_EQ(rows->size(), 1U);
    EXPECT_STREQ(rows->at(0)->at(0), "1");
    cim_.freeRows(&rows);
}

TEST_F(LinuxRecords, OfAnotherNamespaceMakeTheSuitesOwnAndAnswerThatItIsNotThere) {
    EXPECT_EQ(write({}, {}, "TestResult", L"ROOT\\Elsewhere"), 19);
    EXPECT_EQ(query({"Name"}, "__Namespace", L"ROOT\\Norvane"), 0);
    EXPECT_EQ(rows_, (Rows{{"Norvane_Diagnostics"}}));
    EXPECT_EQ(query({"Id"}), 21) << "no class was made";
}

TEST_F(LinuxRecords, GoIntoTheOuterNamespaceToo) {
    EXPECT_EQ(write({"TestName"}, {"outer"}, "TestResult", L"root/norvane"), 0);
    ASSERT_EQ(query({"TestName"}, "TestResult", L"ROOT\\Norvane"), 0);
    EXPECT_EQ(rows_, (Rows{{"outer"}}));
}

TEST_F(LinuxRecords, NeedAClassThatCanHaveInstances) {
    for (const char* name : {static_cast<const char*>(nullptr), "", "__Namespace", "meta_class"}) {
        EXPECT_EQ(write({"TestName"}, {"lost"}, name), 19);
        EXPECT_EQ(query({"Name"}, "__Namespace", L"ROOT\\Norvane"), 0);
        EXPECT_EQ(rows_, (Rows{{"Norvane_Diagnostics"}})) << "the namespaces are made all the same";
        EXPECT_EQ(remove(L"ROOT", L"Norvane", L"Norvane_Diagnostics"), 0);
    }
}

TEST_F(LinuxRecords, AreRefusedWhereTheQueryForTheirIdsWouldNotFindTheClass) {
    const std::string cut(50, 'c');
    const std::string longer = cut + "d";
    for (const char* name : {longer.c_str(), "My Class", "Cl\xC3\xA9", "A WHERE TestName = 'x'"}) {
        EXPECT_EQ(write({"TestName"}, {"lost"}, name), 21) << name;
        EXPECT_EQ(query({"TestName"}, name), 21) << name;
    }
    EXPECT_EQ(write({"TestName"}, {"kept"}, cut.c_str()), 0) << "50 characters are sent";
    EXPECT_EQ(query({"TestName"}, cut.c_str()), 0);
    EXPECT_EQ(rows_, (Rows{{"kept"}}));
}

TEST_F(LinuxRecords, GoOnBehindTheIdsThatTheQueryFinds) {
    const std::string cut(50, 'c');
    EXPECT_EQ(write({"TestName"}, {"first"}, cut.c_str()), 0);
    EXPECT_EQ(write({"TestName"}, {"second"}, cut.c_str()), 0);
    const auto longer = cut + "d";
    EXPECT_EQ(write({"TestName"}, {"other"}, longer.c_str()), 0) << "those of the class with the cut name";
    vexil::platform::RecordStore store(file_, vexil::platform::Database::Access::Read);
    const auto number = store.findClass("ROOT\\Norvane\\Norvane_Diagnostics", longer);
    ASSERT_TRUE(number);
    EXPECT_EQ(store.ids(*number).oldest(), 2);
}

TEST_F(LinuxRecords, OfAnotherClassLeaveTheResultLogEmpty) {
    ASSERT_EQ(write({"TestName"}, {"another program's"}, "Other"), 0);
    vexil::system::ResultLog log(cim_);
    std::vector<vexil::system::ResultRecord> records(1);
    EXPECT_EQ(log.read(records), CimStatus::Success);
    EXPECT_TRUE(records.empty());
    bool exhausted = true;
    EXPECT_EQ(log.readExhausted(exhausted), CimStatus::Success);
    EXPECT_FALSE(exhausted);
    EXPECT_EQ(log.append({}), CimStatus::Success);
    EXPECT_EQ(log.read(records), CimStatus::Success);
    EXPECT_EQ(records.size(), 1U);
    EXPECT_EQ(query({"TestName"}, "Other"), 0);
    EXPECT_EQ(rows_, (Rows{{"another program's"}}));
}

TEST_F(LinuxRecords, TellOfTheirClassInTheWayOfWmi) {
    ASSERT_EQ(write("first"), 0);
    EXPECT_EQ(query({"__CLASS"}, "meta_class"), 0);
    EXPECT_EQ(rows_, (Rows{{"TestResult"}}));
    EXPECT_EQ(query({"*"}, "meta_class"), 23) << "a definition is no row";
    EXPECT_EQ(query({"__CLASS"}, "meta_class", L"ROOT\\CIMV2"), 0);
    EXPECT_EQ(rows_, (Rows{{"Win32_PnPSignedDriver"}, {"Win32_Processor"}, {"Win32_VideoController"}}));
    EXPECT_EQ(query({"__CLASS"}, "meta_class", L"ROOT"), 0);
    EXPECT_TRUE(rows_.empty());
}

TEST_F(LinuxRecords, NeedAHome) {
    vexil::platform::LinuxCim homeless("/", std::nullopt);
    EXPECT_EQ(static_cast<int>(homeless.writeRecord({}, {}, "A", vexil::system::recordNamespace)), 18);
    EXPECT_EQ(static_cast<int>(homeless.removeNamespace(L"ROOT", L"Norvane", L"Norvane_Diagnostics")), 18);
}

TEST_F(LinuxRecords, AreNotConnectedBeforeTheFirstAndLeaveNoFileForAQuestion) {
    EXPECT_EQ(query({"Id"}), 19);
    EXPECT_EQ(remove(L"ROOT", L"Norvane", L"Norvane_Diagnostics"), 19);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "state"));
}

class LinuxNamespaces : public RecordFolderTest {};

TEST_F(LinuxNamespaces, TakeTheParentAwayWithTheLastChild) {
    write("gone");
    EXPECT_EQ(remove(L"ROOT", L"Norvane", L"Norvane_Diagnostics"), 0);
    EXPECT_EQ(query({"Id"}), 19);
    EXPECT_EQ(query({"Name"}, "__Namespace", L"ROOT"), 0);
    EXPECT_EQ(rows_, (Rows{{"CIMV2"}}));
    EXPECT_EQ(write("again"), 0);
    ASSERT_EQ(query({"Id", "TestName"}), 0);
    EXPECT_EQ(rows_, (Rows{{"0", "again"}})) << "nothing of the removed class came back";
}

TEST_F(LinuxNamespaces, KeepTheParentOfOthers) {
    write("gone");
    {
        vexil::platform::RecordStore store(file_, vexil::platform::Database::Access::Write);
        store.addNamespace("ROOT\\Norvane\\Other");
        store.commit();
    }
    EXPECT_EQ(remove(L"ROOT", L"Norvane", L"Norvane_Diagnostics"), 0);
    EXPECT_EQ(query({"Name"}, "__Namespace", L"ROOT\\Norvane"), 0);
    EXPECT_EQ(rows_, (Rows{{"Other"}}));
}

TEST_F(LinuxNamespaces, AreNotRemovedWhereTheyAreNot) {
    write("kept");
    EXPECT_EQ(remove(L"ROOT", L"Norvane", L"Other"), 18);
    EXPECT_EQ(remove(L"ROOT", L"Other", L"Norvane_Diagnostics"), 19);
    EXPECT_EQ(remove(L"ROOT", L"CIMV2", L"Other"), 18);
    EXPECT_EQ(remove(nullptr, nullptr, nullptr), 19);
    EXPECT_EQ(query({"TestName"}), 0);
    EXPECT_EQ(rows_, (Rows{{"kept"}}));
}

} // namespace
