#include "fake_repository.h"

#include "platform/windows/cim/win_cim.h"
#include "system/cim/record_schema.h"
#include "system/result_log.h"

#include <comdef.h>

#include <wbemidl.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

// The writing side over COM, against a repository that takes writes.
namespace {

using vexil::platform::WinCim;
using vexil::system::recordNamespace;
using vexil::system::recordTexts;
using vexil::tests::FakeClass;
using vexil::tests::FakeRepository;

using Steps = std::vector<std::string>;

class WinCimWriting : public testing::Test {
protected:
    int write(const std::vector<std::string>& names, const std::vector<std::string>& values) {
        return static_cast<int>(cim_.writeRecord(names, values, "TestResult", recordNamespace));
    }
    int write(const std::string& testName) { return write({"TestName"}, {testName}); }
    int remove() {
        return static_cast<int>(cim_.removeNamespace(L"ROOT", L"Norvane", L"Norvane_Diagnostics"));
    }

    /// The class as the suite makes it, with records of these ids.
    FakeClass& makeClass(long firstId = 0, long count = 0) {
        com_.namespaces[L"ROOT\\Norvane"];
        auto& made = com_.namespaces[recordNamespace][L"TestResult"];
        made.properties = {{L"Id", CIM_UINT32}};
        for (const char* name : recordTexts) {
            made.properties.emplace_back(std::wstring(name, name + std::string(name).size()), CIM_STRING);
        }
        made.key = L"Id";
        for (long i = 0; i < count; ++i) {
            made.instances[firstId + i] = {{L"TestName", L"filled"}};
        }
        return made;
    }
    FakeClass& records() { return com_.namespaces[recordNamespace][L"TestResult"]; }

    /// Everything but reading the rows, which has no part in the order.
    [[nodiscard]] Steps steps() const {
        Steps kept;
        std::ranges::copy_if(com_.steps, std::back_inserter(kept),
                             [](const std::string& step) { return !step.starts_with("Get Id"); });
        return kept;
    }
    [[nodiscard]] std::ptrdiff_t count(const std::string& step) const {
        return std::ranges::count(com_.steps, step);
    }
    void expectNothingLeftBehind() const {
        EXPECT_EQ(com_.textsAlive, 0);
        EXPECT_EQ(com_.interfacesAlive, 0);
        EXPECT_EQ(com_.references, 0) << "references to COM must be in balance";
    }
    void TearDown() override { expectNothingLeftBehind(); }

    FakeRepository com_;
    WinCim cim_{com_};
};

const std::vector<std::string> allNames(recordTexts.begin(), recordTexts.end());

TEST_F(WinCimWriting, TakesItsStepsInOrderOnACleanMachine) {
    EXPECT_EQ(write({"TestName", "TestStatus"}, {"memory", "Passed"}), 0);
    EXPECT_EQ(
        steps(),
        (Steps{"CoCreateInstance", "ConnectServer ROOT\\Norvane\\Norvane_Diagnostics",
               // the outer namespace
               "CoCreateInstance", "ConnectServer ROOT", "GetObject __Namespace", "SpawnInstance __Namespace",
               "Put Name=text Norvane", "PutInstance __Namespace flags 16", "GetCallStatus -1",
               // the inner one
               "CoCreateInstance", "ConnectServer ROOT\\Norvane", "GetObject __Namespace",
               "SpawnInstance __Namespace", "Put Name=text Norvane_Diagnostics",
               "PutInstance __Namespace flags 16", "GetCallStatus -1",
               // the class
               "ConnectServer ROOT\\Norvane\\Norvane_Diagnostics", "GetObject TestResult", "GetObject ",
               "Put __CLASS=text TestResult", "Put Id=nothing type 19", "GetPropertyQualifierSet Id",
               "Qualifier Id.Key=true", "Put ModuleName=nothing type 8", "Put DeviceUdi=nothing type 8",
               "Put DeviceDisplayName=nothing type 8", "Put TestName=nothing type 8",
               "Put TestStatus=nothing type 8", "Put TestStartTimestamp=nothing type 8",
               "Put TestDuration=nothing type 8", "PutClass TestResult flags 16", "GetCallStatus -1",
               "GetObject TestResult",
               // the record
               "SpawnInstance TestResult", "CoCreateInstance",
               "ConnectServer ROOT\\Norvane\\Norvane_Diagnostics", "CoSetProxyBlanket",
               "ExecQuery SELECT Id FROM TestResult", "Put Id=number 0", "Put TestName=text memory",
               "Put TestStatus=text Passed", "PutInstance TestResult flags 2"}));
}

TEST_F(WinCimWriting, GivesTheFirstRecordId0AndTheNext1) {
    EXPECT_EQ(write(allNames, {"a", "b", "c", "d", "e", "f", "g"}), 0);
    EXPECT_EQ(write("second"), 0);
    EXPECT_EQ(records().key, L"Id");
    ASSERT_EQ(records().instances.size(), 2U);
    EXPECT_EQ(records().instances[0], (std::map<std::wstring, std::wstring>{{L"ModuleName", L"a"},
                                                                            {L"DeviceUdi", L"b"},
                                                                            {L"DeviceDisplayName", L"c"},
                                                                            {L"TestName", L"d"},
                                                                            {L"TestStatus", L"e"},
                                                                            {L"TestStartTimestamp", L"f"},
                                                                            {L"TestDuration", L"g"}}));
    EXPECT_EQ(records().instances[1], (std::map<std::wstring, std::wstring>{{L"TestName", L"second"}}));
}

TEST_F(WinCimWriting, MakesNothingThatIsThere) {
    makeClass();
    EXPECT_EQ(write("first"), 0);
    EXPECT_EQ(steps(), (Steps{"CoCreateInstance", "ConnectServer ROOT\\Norvane\\Norvane_Diagnostics",
                              "GetObject TestResult", "SpawnInstance TestResult", "CoCreateInstance",
                              "ConnectServer ROOT\\Norvane\\Norvane_Diagnostics", "CoSetProxyBlanket",
                              "ExecQuery SELECT Id FROM TestResult", "Put Id=number 0",
                              "Put TestName=text first", "PutInstance TestResult flags 2"}));
}

TEST_F(WinCimWriting, TakesAnOuterNamespaceThatIsThereForMade) {
    com_.namespaces[L"ROOT\\Norvane"];
    EXPECT_EQ(write("first"), 0);
    com_.namespaces.erase(recordNamespace);
    com_.callStatus = static_cast<HRESULT>(WBEM_E_ALREADY_EXISTS);
    EXPECT_EQ(write("first"), 0) << "a repository that refuses what exists is understood as well";
}

TEST_F(WinCimWriting, DeletesId7OfIds7To5006AndGoesOnWith5007) {
    makeClass(7, 5000);
    EXPECT_EQ(write("new"), 0);
    EXPECT_EQ(count("DeleteInstance TestResult.Id=7"), 1);
    EXPECT_EQ(records().instances.size(), 5000U);
    EXPECT_EQ(records().instances.begin()->first, 8);
    EXPECT_EQ(records().instances.rbegin()->first, 5007);
}

TEST_F(WinCimWriting, DeletesNothingBelow5000Records) {
    makeClass(0, 4999);
    EXPECT_EQ(write("new"), 0);
    EXPECT_EQ(records().instances.size(), 5000U);
}

TEST_F(WinCimWriting, DeletesOneRecordOnlyOfMoreThan5000) {
    makeClass(0, 5003);
    EXPECT_EQ(write("new"), 0);
    EXPECT_EQ(records().instances.size(), 5003U);
    EXPECT_EQ(records().instances.begin()->first, 1);
}

TEST_F(WinCimWriting, CannotMakeRoomOnceTheOldestIdLiesAbove5001) {
    makeClass(5002, 5000);
    EXPECT_EQ(write("new"), 19);
    EXPECT_EQ(count("DeleteInstance TestResult.Id=5001"), 1);
    EXPECT_EQ(records().instances.size(), 5000U);
}

TEST_F(WinCimWriting, OfDifferentNumbersOfNamesAndValuesWritesNothingAndAnswersSuccess) {
    EXPECT_EQ(write({"TestName", "TestStatus"}, {"only"}), 0);
    EXPECT_TRUE(records().instances.empty());
    EXPECT_EQ(records().properties.size(), 8U) << "namespaces and class are made all the same";
}

TEST_F(WinCimWriting, OfDifferentNumbersOfNamesAndValuesStillPushesTheOldestOut) {
    makeClass(0, 5000);
    EXPECT_EQ(write({"TestName"}, {}), 0);
    EXPECT_EQ(records().instances.size(), 4999U);
    EXPECT_EQ(records().instances.begin()->first, 1);
}

TEST_F(WinCimWriting, PassesOverNamesThatTheClassDoesNotKnow) {
    makeClass();
    EXPECT_EQ(write({"Colour", "TestName"}, {"red", "kept"}), 0);
    EXPECT_EQ(records().instances[0], (std::map<std::wstring, std::wstring>{{L"TestName", L"kept"}}));
}

TEST_F(WinCimWriting, LosesARecordWhoseIdAnotherWriterTookWithoutAWord) {
    makeClass();
    ASSERT_EQ(write("this writer's"), 0);
    const auto put = static_cast<int>(com_.steps.size()) + 1; // behind one row more
    com_.steps.clear();
    com_.failingStep = put;
    com_.failure = static_cast<HRESULT>(WBEM_E_ALREADY_EXISTS);
    EXPECT_EQ(write("lost"), 0);
    EXPECT_EQ(com_.steps.back(), "PutInstance TestResult flags 2");
    EXPECT_EQ(static_cast<int>(com_.steps.size()), put);
    EXPECT_EQ(records().instances.size(), 1U);
}

TEST_F(WinCimWriting, EndsWithTheStatusOfTheQueryThatFailed) {
    makeClass();
    com_.failingStep = 7;
    EXPECT_EQ(write("new"), 20);
    EXPECT_EQ(com_.steps.back(), "CoSetProxyBlanket");
    com_.steps.clear();
    com_.failingStep = 8;
    EXPECT_EQ(write("new"), 21);
    EXPECT_TRUE(com_.steps.back().starts_with("ExecQuery"));
    EXPECT_TRUE(records().instances.empty());
}

TEST_F(WinCimWriting, EndsWith23IfAnIdCannotBeRead) {
    makeClass(0, 1);
    com_.failingStep = 9;
    EXPECT_EQ(write("new"), 23);
    EXPECT_EQ(com_.steps.back(), "Get Id");
}

TEST_F(WinCimWriting, KeepsTheFailureOfAMakingThatTurnedOutUnneeded) {
    // Another writer makes the class while this one fails to: the record is written, and the status stays.
    com_.namespaces[L"ROOT\\Norvane"];
    makeClass();
    com_.failingStep = 3;
    EXPECT_EQ(write("warm up"), 0) << "GetObject failed, the class was made anew";
    com_.steps.clear();
    com_.callStatus = E_FAIL;
    EXPECT_EQ(write("new"), 19);
    EXPECT_EQ(com_.steps.back(), "PutInstance TestResult flags 2");
}

TEST_F(WinCimWriting, FailsWith19AtEachStepThatMakesSomething) {
    write("all steps");
    const auto steps = com_.steps;
    const auto find = [&](const std::string& step) {
        return static_cast<std::size_t>(std::ranges::find(steps, step) - steps.begin());
    };
    const auto spawn = find("SpawnInstance TestResult");
    const auto query = find("ExecQuery SELECT Id FROM TestResult");
    for (std::size_t step = 0; step < steps.size(); ++step) {
        com_.namespaces = {{L"ROOT", {}}};
        com_.steps.clear();
        com_.failingStep = static_cast<int>(step) + 1;
        // Not connected is what it finds without failing; the inner query has statuses of its own; a put that
        // fails is not told of, nor is a look for the class, which is made where it is not found.
        const bool unseen = steps[step].starts_with("Put Id=number") ||
                            steps[step].starts_with("Put TestName=text") ||
                            steps[step] == "PutInstance TestResult flags 2" || step == 1 ||
                            step == find("GetObject TestResult");
        const int expected = step == 0           ? 18
                             : unseen            ? 0
                             : step == spawn + 1 ? 18
                             : step == query - 1 ? 20
                             : step == query     ? 21
                                                 : 19;
        EXPECT_EQ(write("new"), expected) << steps[step] << ", step " << step;
        expectNothingLeftBehind();
    }
}

TEST_F(WinCimWriting, FailsWith19IfACallComesToNothingOrCannotBeWaitedFor) {
    com_.callStatus = E_FAIL;
    EXPECT_EQ(write("new"), 19);
    com_.callStatus = S_OK;
    com_.givesCallResult = false;
    EXPECT_EQ(write("new"), 19);
}

TEST_F(WinCimWriting, EndsIfTheNamespaceIsNotThereAfterTheSuitesOwnWereMade) {
    EXPECT_EQ(static_cast<int>(cim_.writeRecord({}, {}, "TestResult", L"ROOT\\Elsewhere")), 19);
    EXPECT_TRUE(com_.namespaces.contains(recordNamespace));
}

TEST_F(WinCimWriting, NeedsAClassThatCanHaveInstances) {
    for (const char* name : {static_cast<const char*>(nullptr), ""}) {
        com_.namespaces = {{L"ROOT", {}}};
        com_.steps.clear();
        EXPECT_EQ(static_cast<int>(cim_.writeRecord({"TestName"}, {"lost"}, name, recordNamespace)), 19);
        EXPECT_TRUE(com_.namespaces.contains(recordNamespace)) << "the namespaces are made all the same";
        EXPECT_EQ(com_.steps.back(), "SpawnInstance ");
    }
}

TEST_F(WinCimWriting, EndsIfTheQueryForTheIdsDoesNotFindTheClass) {
    const std::string longer(51, 'c');
    for (const char* name : {longer.c_str(), "My Class"}) {
        EXPECT_EQ(static_cast<int>(cim_.writeRecord({"TestName"}, {"lost"}, name, recordNamespace)), 21);
    }
}

TEST_F(WinCimWriting, AnswersThatComCouldNotBeStarted) {
    com_.initializeResult = E_FAIL;
    EXPECT_EQ(write("new"), 16);
    EXPECT_EQ(remove(), 16);
    com_.initializeResult = S_OK;
    com_.securityResult = E_ACCESSDENIED;
    EXPECT_EQ(write("new"), 17);
    EXPECT_EQ(remove(), 17);
    EXPECT_TRUE(com_.steps.empty());
}

TEST_F(WinCimWriting, FailsWith19IfComDoesNotStartForANamespaceAndWithTheStatusOfTheQueryForTheIds) {
    // On a clean machine COM is started for the record, each namespace and the query.
    for (const auto& [start, expected] : {std::pair(2, 19), {3, 19}, {4, 16}}) {
        com_.namespaces = {{L"ROOT", {}}};
        com_.starts = 0;
        com_.refusedStart = start;
        EXPECT_EQ(write("lost"), expected) << start;
        EXPECT_EQ(com_.starts, start) << "nothing is started behind it";
        expectNothingLeftBehind();
    }
    EXPECT_TRUE(records().instances.empty());
    com_.starts = 0;
    com_.refusedStart = 2;
    EXPECT_EQ(write("lost"), 16) << "where the class is there, the query's is the second";
    EXPECT_TRUE(records().instances.empty());
}

TEST_F(WinCimWriting, LosesARecordWhoseIdAnotherWriterTakesBehindTheQuery) {
    makeClass();
    com_.afterQuery = [&] {
        WinCim other(com_);
        EXPECT_EQ(
            static_cast<int>(other.writeRecord({"TestName"}, {"the other's"}, "TestResult", recordNamespace)),
            0);
    };
    EXPECT_EQ(write("this one's"), 0) << "both are told the same";
    ASSERT_EQ(records().instances.size(), 1U);
    EXPECT_EQ(records().instances[0], (std::map<std::wstring, std::wstring>{{L"TestName", L"the other's"}}));
}

TEST_F(WinCimWriting, WorksInAnotherModeOfComAndLeavesItsReference) {
    com_.initializeResult = RPC_E_CHANGED_MODE;
    com_.securityResult = RPC_E_TOO_LATE;
    EXPECT_EQ(write("new"), 0);
    EXPECT_EQ(com_.references, 0);
}

TEST_F(WinCimWriting, WritesWhatItHasWhereATextFindsNoMemory) {
    makeClass();
    ASSERT_EQ(write(allNames, {"a", "b", "c", "d", "e", "f", "g"}), 0);
    const int all = com_.texts;
    // The last texts of a record are its names and values, two for each property.
    for (int missing = 1; missing <= 14; ++missing) {
        records().instances.clear();
        com_.texts = 0;
        com_.refusedText = all - missing + 1;
        EXPECT_EQ(write(allNames, {"a", "b", "c", "d", "e", "f", "g"}), 0);
        ASSERT_EQ(records().instances.size(), 1U) << "the record is put all the same";
        EXPECT_EQ(records().instances[0].size(), static_cast<std::size_t>(7 - (missing + 1) / 2));
        expectNothingLeftBehind();
    }
    com_.texts = 0;
    com_.refusedText = all - 14;
    EXPECT_THROW(write(allNames, {"a", "b", "c", "d", "e", "f", "g"}), _com_error);
}

TEST_F(WinCimWriting, RaisesOutOfMemoryForEveryOtherTextAndLeavesNothingBehind) {
    write({}, {});
    const int all = com_.texts;
    for (int text = 1; text <= all; ++text) {
        com_.namespaces = {{L"ROOT", {}}};
        com_.texts = 0;
        com_.refusedText = text;
        EXPECT_THROW(write({}, {}), _com_error) << text;
        expectNothingLeftBehind();
    }
}

TEST_F(WinCimWriting, RemovesTheParentWithItsLastChild) {
    makeClass(0, 3);
    EXPECT_EQ(remove(), 0);
    EXPECT_EQ(com_.steps, (Steps{"CoCreateInstance", "ConnectServer ROOT\\Norvane",
                                 "DeleteInstance __Namespace.Name='Norvane_Diagnostics'", "CoCreateInstance",
                                 "ConnectServer ROOT\\Norvane", "CoSetProxyBlanket",
                                 "ExecQuery SELECT Name FROM __Namespace", "CoCreateInstance",
                                 "ConnectServer ROOT", "DeleteInstance __Namespace.Name='Norvane'"}));
    EXPECT_EQ(com_.namespaces.size(), 1U);
}

TEST_F(WinCimWriting, KeepsTheParentOfOtherNamespaces) {
    makeClass();
    com_.namespaces[L"ROOT\\Norvane\\Other"];
    EXPECT_EQ(remove(), 0);
    EXPECT_TRUE(com_.namespaces.contains(L"ROOT\\Norvane"));
    EXPECT_FALSE(com_.namespaces.contains(recordNamespace));
}

TEST_F(WinCimWriting, AnswersTheStepOfTheRemovalThatFailed) {
    EXPECT_EQ(remove(), 19) << "the parent is not there";
    com_.namespaces[L"ROOT\\Norvane"];
    EXPECT_EQ(remove(), 18) << "the child is not there";
    const int expected[] = {18, 19, 18, 18, 19, 20, 21, 18, 19, 18};
    for (int step = 0; step < 10; ++step) {
        makeClass();
        com_.steps.clear();
        com_.failingStep = step + 1;
        EXPECT_EQ(remove(), expected[step]) << step;
        expectNothingLeftBehind();
    }
}

TEST_F(WinCimWriting, TakesANamespaceWithoutTheClassForAnEmptyResultLog) {
    using vexil::system::CimStatus;
    com_.namespaces[L"ROOT\\Norvane"];
    com_.namespaces[recordNamespace][L"Other"];
    vexil::system::ResultLog log(cim_);
    std::vector<vexil::system::ResultRecord> read(1);
    EXPECT_EQ(log.read(read), CimStatus::Success);
    EXPECT_TRUE(read.empty());
    EXPECT_EQ(com_.steps.back(), "ExecQuery SELECT * FROM meta_class WHERE __CLASS = 'TestResult'");
    EXPECT_EQ(log.append({}), CimStatus::Success);
    com_.steps.clear();
    com_.failingStep = 4;
    EXPECT_EQ(log.read(read), CimStatus::QueryFailed) << "the class is there";
}

TEST_F(WinCimWriting, KeepsTheResultLogOfTheSuite) {
    using vexil::system::CimStatus;
    using vexil::system::ResultRecord;
    vexil::system::ResultLog log(cim_);
    std::vector<ResultRecord> read;
    EXPECT_EQ(log.read(read), CimStatus::Success);
    EXPECT_EQ(log.clear(), CimStatus::Success);
    const ResultRecord record{0,        "VIDEO_CARD", "udi",  "Aurora 9", "VIDEO_MEMORY_TEST",
                              "Passed", "start",      "1.000"};
    EXPECT_EQ(log.append(record), CimStatus::Success);
    EXPECT_EQ(log.read(read), CimStatus::Success);
    EXPECT_EQ(read, std::vector{record});
    EXPECT_EQ(log.clear(), CimStatus::Success);
    EXPECT_EQ(com_.namespaces.size(), 1U);
    EXPECT_EQ(log.read(read), CimStatus::Success);
    EXPECT_TRUE(read.empty());
}

} // namespace
