#include "fake_wbem.h"

#include "platform/windows/cim/win_cim.h"

#include <comdef.h>

#include <wbemidl.h>

#include <gtest/gtest.h>

#include <algorithm>

#include <string>
#include <vector>

namespace {

using vexil::platform::WinCim;
using vexil::system::CimRows;
using vexil::system::machineNamespace;
using vexil::tests::FakeValue;
using vexil::tests::FakeWbem;

using Calls = std::vector<std::string>;
using Rows = std::vector<std::vector<std::string>>;

class WinCimTest : public testing::Test {
protected:
    int query(const std::vector<const char*>& properties, const char* className = "Class") {
        CimRows rows = nullptr;
        const auto status = cim_.query(properties.data(), className,
                                       static_cast<std::int32_t>(properties.size()), rows, machineNamespace);
        return keep(rows, static_cast<int>(status));
    }
    int queryWhere(const char* where) {
        const char* properties[] = {"A"};
        CimRows rows = nullptr;
        const auto status = cim_.queryWhere(properties, where, "Class", 1, rows, machineNamespace);
        return keep(rows, static_cast<int>(status));
    }
    /// The text of one value.
    std::string textOf(const FakeValue& value) {
        com_.objects = {{{L"A", value}}};
        EXPECT_EQ(query({"A"}), 0);
        return rows_.empty() || rows_[0].empty() ? "(none)" : rows_[0][0];
    }
    void TearDown() override {
        EXPECT_EQ(com_.textsAlive, 0);
        EXPECT_EQ(com_.interfacesAlive, 0);
        EXPECT_EQ(com_.references, 0) << "references to COM must be in balance";
    }

    FakeWbem com_;
    WinCim cim_{com_};
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

TEST_F(WinCimTest, RunsItsStepsInOrderAndReleasesBackwards) {
    com_.objects = {{{L"Caption", FakeValue::text(L"Intel64 Family 6")}}};
    EXPECT_EQ(query({"Caption"}, "Win32_Processor"), 0);
    EXPECT_EQ(com_.calls, (Calls{"CoInitializeEx 2", "CoInitializeSecurity 0 3 0",
                                 "CoCreateInstance {4590F811-1D3A-11D0-891F-00AA004B2E24} 1 "
                                 "{DC12A687-737F-11CF-884D-00AA004B2E24}",
                                 "ConnectServer ROOT\\CIMV2", "CoSetProxyBlanket 10 0 3 3 0",
                                 "ExecQuery WQL 48 SELECT Caption FROM Win32_Processor", "Next -1 1",
                                 "Get Caption", "release object", "Next -1 1", "release enumerator",
                                 "release services", "release locator", "CoUninitialize"}));
    EXPECT_EQ(rows_, Rows{{"Intel64 Family 6"}});
}

TEST_F(WinCimTest, SendsTheClauseOfQueryWhere) {
    EXPECT_EQ(queryWhere("B = 'C'"), 0);
    EXPECT_EQ(com_.calls.at(5), "ExecQuery WQL 48 SELECT A FROM Class WHERE B = 'C'");
}

TEST_F(WinCimTest, SendsTheFirst50CharactersOfALongerProperty) {
    EXPECT_EQ(query({(std::string(50, 'p') + "0123456789").c_str()}), 0);
    EXPECT_EQ(com_.calls.at(5), "ExecQuery WQL 48 SELECT " + std::string(50, 'p') + " FROM Class");
}

TEST_F(WinCimTest, AnswersSuccessAndNullRowsWhereNothingMatches) {
    EXPECT_EQ(query({"A"}), 0);
    EXPECT_TRUE(isNull_);
}

TEST_F(WinCimTest, AnswersARowForEachObjectInTheOrderOfTheRequest) {
    com_.objects = {{{L"A", FakeValue::number(1)}, {L"B", FakeValue::text(L"x")}},
                    {{L"A", FakeValue::number(2)}, {L"B", FakeValue::text(L"y")}}};
    EXPECT_EQ(query({"B", "A"}), 0);
    EXPECT_EQ(rows_, (Rows{{"x", "1"}, {"y", "2"}}));
}

TEST_F(WinCimTest, ReadsOnAndFreesTheRowsIfAPropertyCannotBeRead) {
    com_.objects = {
        {{L"A", FakeValue::number(1)}, {L"C", FakeValue::number(3)}},
        {{L"A", FakeValue::number(2)}, {L"B", FakeValue::number(5)}, {L"C", FakeValue::number(4)}}};
    EXPECT_EQ(query({"A", "B", "C"}), 23);
    EXPECT_TRUE(isNull_);
    EXPECT_EQ(std::count(com_.calls.begin(), com_.calls.end(), "Get C"), 2) << "the query runs to its end";
}

TEST_F(WinCimTest, AnswersThatComDidNotStart) {
    com_.initializeResult = E_FAIL;
    EXPECT_EQ(query({"A"}), 16);
    EXPECT_EQ(com_.calls, Calls{"CoInitializeEx 2"});
}

TEST_F(WinCimTest, AnswersThatSecurityWasNotSetAndTakesComDown) {
    com_.securityResult = E_ACCESSDENIED;
    EXPECT_EQ(query({"A"}), 17);
    EXPECT_EQ(com_.calls, (Calls{"CoInitializeEx 2", "CoInitializeSecurity 0 3 0", "CoUninitialize"}));
}

TEST_F(WinCimTest, LeavesComAloneIfSecurityWasNotSetInAnotherMode) {
    com_.initializeResult = RPC_E_CHANGED_MODE;
    com_.securityResult = E_ACCESSDENIED;
    EXPECT_EQ(query({"A"}), 17);
    EXPECT_EQ(com_.calls, (Calls{"CoInitializeEx 2", "CoInitializeSecurity 0 3 0"}));
}

TEST_F(WinCimTest, GoesOnInAnotherModeAndLeavesTheThreadsReference) {
    com_.initializeResult = RPC_E_CHANGED_MODE;
    com_.objects = {{{L"A", FakeValue::number(1)}}};
    EXPECT_EQ(query({"A"}), 0);
    EXPECT_EQ(rows_, Rows{{"1"}});
    EXPECT_EQ(com_.calls.back(), "release locator");
}

TEST_F(WinCimTest, GivesBackTheReferenceOfAThreadThatHasComInThisMode) {
    com_.initializeResult = S_FALSE;
    EXPECT_EQ(query({"A"}), 0);
    EXPECT_EQ(com_.calls.back(), "CoUninitialize");
}

TEST_F(WinCimTest, GoesOnIfSecurityWasSetBefore) {
    com_.securityResult = RPC_E_TOO_LATE;
    EXPECT_EQ(query({"A"}), 0);
}

TEST_F(WinCimTest, AnswersThatTheLocatorWasNotCreated) {
    com_.createResult = REGDB_E_CLASSNOTREG;
    EXPECT_EQ(query({"A"}), 18);
    EXPECT_EQ(com_.calls.size(), 4U);
    EXPECT_EQ(com_.calls.back(), "CoUninitialize");
}

TEST_F(WinCimTest, AnswersThatItDidNotConnect) {
    com_.connectResult = static_cast<HRESULT>(WBEM_E_INVALID_NAMESPACE);
    EXPECT_EQ(query({"A"}), 19);
    com_.connectResult = S_OK;
    com_.givesServices = false;
    EXPECT_EQ(query({"A"}), 19) << "no services object is no connection";
}

TEST_F(WinCimTest, AnswersThatTheBlanketWasNotSet) {
    com_.blanketResult = E_FAIL;
    EXPECT_EQ(query({"A"}), 20);
}

TEST_F(WinCimTest, AnswersThatTheQueryFailed) {
    com_.executeResult = static_cast<HRESULT>(WBEM_E_INVALID_QUERY);
    EXPECT_EQ(query({"A"}), 21);
    com_.executeResult = S_OK;
    com_.givesEnumerator = false;
    EXPECT_EQ(query({"A"}), 21) << "no enumerator is no query";
}

TEST_F(WinCimTest, ConnectsBeforeItLooksAtTheArguments) {
    CimRows rows = nullptr;
    EXPECT_EQ(static_cast<int>(cim_.query(nullptr, nullptr, 0, rows, machineNamespace)), 25);
    EXPECT_EQ(com_.calls.at(4), "CoSetProxyBlanket 10 0 3 3 0");
    com_.connectResult = E_FAIL;
    EXPECT_EQ(static_cast<int>(cim_.query(nullptr, nullptr, 0, rows, machineNamespace)), 19);
    com_.connectResult = S_OK;
    EXPECT_EQ(queryWhere(nullptr), 29);
    EXPECT_EQ(query({"A", nullptr}), 25);
    EXPECT_EQ(query({}), 25) << "an empty vector has no array";
    EXPECT_EQ(query({"A"}, nullptr), 26);
    const char* properties[] = {"A"};
    EXPECT_EQ(static_cast<int>(cim_.query(properties, "Class", 0, rows, machineNamespace)), 27);
}

TEST_F(WinCimTest, ConnectsToNoNamespaceForANullName) {
    const char* properties[] = {"A"};
    CimRows rows = nullptr;
    EXPECT_EQ(static_cast<int>(cim_.query(properties, "Class", 1, rows, nullptr)), 0);
    EXPECT_EQ(com_.calls.at(3), "ConnectServer ");
}

TEST_F(WinCimTest, RaisesOutOfMemoryForEveryTextAndLeavesNothingBehind) {
    com_.objects = {{{L"A", FakeValue::number(1)}}};
    constexpr int textsOfAQuery = 4; // namespace, language, query, name of the property
    for (com_.refusedText = 1; com_.refusedText <= textsOfAQuery; ++com_.refusedText) {
        com_.texts = 0;
        try {
            query({"A"});
            ADD_FAILURE() << "nothing was raised for text " << com_.refusedText;
        } catch (const _com_error& error) {
            EXPECT_EQ(static_cast<unsigned long>(error.Error()), 0x8007000EUL);
        }
        EXPECT_EQ(com_.interfacesAlive, 0);
        EXPECT_EQ(com_.references, 0);
    }
    com_.texts = 0;
    com_.refusedText = 0;
    EXPECT_EQ(query({"A"}), 0);
    EXPECT_EQ(com_.texts, textsOfAQuery);
}

TEST_F(WinCimTest, GivesEachTypeItsText) {
    FakeValue value;
    EXPECT_EQ(textOf(value), "") << "VT_EMPTY";
    V_VT(&value.variant()) = VT_NULL;
    EXPECT_EQ(textOf(value), "");
    EXPECT_EQ(textOf(FakeValue::number(-5)), "-5");
    V_VT(&value.variant()) = VT_I1;
    V_I1(&value.variant()) = -1;
    EXPECT_EQ(textOf(value), "255");
    V_VT(&value.variant()) = VT_UI1;
    V_UI1(&value.variant()) = 200;
    EXPECT_EQ(textOf(value), "200");
    V_VT(&value.variant()) = VT_UI2;
    V_UI2(&value.variant()) = 65535;
    EXPECT_EQ(textOf(value), "65535");
    EXPECT_EQ(textOf(FakeValue::texts({L"a", L"", L"bc"})), "a;;bc;");
    EXPECT_EQ(textOf(FakeValue::bytes("raw")), "raw");
    EXPECT_EQ(textOf(FakeValue::bytes("")), "");
    V_VT(&value.variant()) = VT_BSTR;
    V_BSTR(&value.variant()) = nullptr;
    EXPECT_EQ(textOf(value), "") << "a null text is an empty one";
    EXPECT_EQ(textOf(FakeValue::text(std::wstring(501, L'x'))), std::string(500, 'x'));
}

TEST_F(WinCimTest, GivesAnUnlistedTypeAnEmptyText) {
    FakeValue value;
    V_VT(&value.variant()) = VT_R8;
    V_R8(&value.variant()) = 1.5;
    EXPECT_EQ(textOf(value), "");
    V_VT(&value.variant()) = VT_I2;
    EXPECT_EQ(textOf(value), "");
    V_VT(&value.variant()) = VT_BOOL;
    EXPECT_EQ(textOf(value), "");
    V_VT(&value.variant()) = VT_UI4;
    EXPECT_EQ(textOf(value), "");
    V_VT(&value.variant()) = VT_EMPTY;
}

TEST_F(WinCimTest, NarrowsByTheProcessesCodePage) {
    char expected[8] = {};
    WideCharToMultiByte(CP_ACP, 0, L"\u00E9", 1, expected, 8, nullptr, nullptr);
    EXPECT_EQ(textOf(FakeValue::text(L"\u00E9")), expected);
}

} // namespace
