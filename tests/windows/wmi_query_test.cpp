#include "fake_wbem.h"

#include "platform/windows/cim/win_cim.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace {

using vexil::platform::endWmiQuery;
using vexil::platform::runWmiQuery;
using vexil::system::machineNamespace;
using vexil::system::WhereClause;
using vexil::tests::FakeValue;
using vexil::tests::FakeWbem;

using Calls = std::vector<std::string>;
using Values = std::map<std::string, std::string>;

class WmiQueryTest : public testing::Test {
protected:
    int query(const std::vector<const char*>& properties, const char* where = nullptr) {
        return static_cast<int>(runWmiQuery(com_, comOwned_,
                                            {properties.data(), static_cast<std::int32_t>(properties.size()),
                                             "Class", WhereClause::Optional, where},
                                            values_, machineNamespace));
    }
    std::ptrdiff_t count(const std::string& call) const {
        return std::count(com_.calls.begin(), com_.calls.end(), call);
    }
    void TearDown() override {
        EXPECT_EQ(com_.textsAlive, 0);
        EXPECT_EQ(com_.interfacesAlive, 0);
    }

    FakeWbem com_;
    bool comOwned_ = false;
    Values values_;
};

TEST_F(WmiQueryTest, RunsItsStepsInOrderAndKeepsCom) {
    com_.objects = {{{L"A", FakeValue::number(1)}}};
    EXPECT_EQ(query({"A"}), 0);
    EXPECT_EQ(com_.calls,
              (Calls{"CoInitializeEx 0", "CoInitializeSecurity 0 3 0",
                     "CoCreateInstance {4590F811-1D3A-11D0-891F-00AA004B2E24} 1 "
                     "{DC12A687-737F-11CF-884D-00AA004B2E24}",
                     "ConnectServer ROOT\\CIMV2", "CoSetProxyBlanket 10 0 3 3 0",
                     "ExecQuery WQL 48 SELECT A FROM Class", "Next -1 1", "Get A", "release object",
                     "Next -1 1", "release enumerator", "release services", "release locator"}));
    EXPECT_TRUE(comOwned_);
    EXPECT_EQ(values_, (Values{{"A", "1"}}));
}

TEST_F(WmiQueryTest, StartsComOnceAndTakesItDownAtItsEnd) {
    query({"A"});
    query({"A"});
    EXPECT_EQ(count("CoInitializeEx 0"), 1);
    EXPECT_EQ(com_.references, 1);
    endWmiQuery(com_, comOwned_);
    EXPECT_EQ(com_.references, 0);
}

TEST_F(WmiQueryTest, TakesDownNothingThatItNeverStarted) {
    endWmiQuery(com_, false);
    EXPECT_TRUE(com_.calls.empty());
}

TEST_F(WmiQueryTest, GoesOnWhereComCannotBeStartedAndTriesAgain) {
    com_.initializeResult = E_FAIL;
    com_.objects = {{{L"A", FakeValue::number(1)}}};
    EXPECT_EQ(query({"A"}), 0);
    EXPECT_FALSE(comOwned_);
    EXPECT_EQ(values_, (Values{{"A", "1"}}));
    query({"A"});
    EXPECT_EQ(count("CoInitializeEx 0"), 2);
}

TEST_F(WmiQueryTest, OwnsNothingIfSecurityWasNotSet) {
    com_.securityResult = E_ACCESSDENIED;
    EXPECT_EQ(query({"A"}), 0);
    EXPECT_FALSE(comOwned_);
}

TEST_F(WmiQueryTest, AcceptsThatSecurityWasSetBefore) {
    com_.securityResult = RPC_E_TOO_LATE;
    EXPECT_EQ(query({"A"}), 0);
    EXPECT_TRUE(comOwned_);
}

TEST_F(WmiQueryTest, CountsComInAnotherModeAsItsOwn) {
    com_.initializeResult = RPC_E_CHANGED_MODE;
    EXPECT_EQ(query({"A"}), 0);
    EXPECT_TRUE(comOwned_);
    endWmiQuery(com_, comOwned_);
    EXPECT_EQ(count("CoUninitialize"), 1);
}

TEST_F(WmiQueryTest, SendsTheClauseUnlessItIsNull) {
    EXPECT_EQ(query({"A"}, "B = 'C'"), 0);
    EXPECT_EQ(count("ExecQuery WQL 48 SELECT A FROM Class WHERE B = 'C'"), 1);
}

TEST_F(WmiQueryTest, KeepsTheValuesOfTheLastObject) {
    com_.objects = {{{L"A", FakeValue::number(1)}, {L"B", FakeValue::text(L"x")}},
                    {{L"A", FakeValue::number(2)}, {L"B", FakeValue()}}};
    EXPECT_EQ(query({"A", "B"}), 0);
    EXPECT_EQ(values_, (Values{{"A", "2"}, {"B", ""}}));
}

TEST_F(WmiQueryTest, ReadsOnIfAPropertyCannotBeRead) {
    com_.objects = {{{L"B", FakeValue::number(1)}}};
    EXPECT_EQ(query({"A", "B"}), 23);
    EXPECT_EQ(values_, (Values{{"B", "1"}}));
}

TEST_F(WmiQueryTest, GivesEachTypeItsText) {
    FakeValue small;
    V_VT(&small.variant()) = VT_I2;
    V_I2(&small.variant()) = -3;
    FakeValue yes;
    V_VT(&yes.variant()) = VT_BOOL;
    V_BOOL(&yes.variant()) = VARIANT_TRUE;
    FakeValue no;
    V_VT(&no.variant()) = VT_BOOL;
    FakeValue real;
    V_VT(&real.variant()) = VT_R8;
    com_.objects = {{{L"I2", small},
                     {L"I4", FakeValue::number(-4)},
                     {L"Yes", yes},
                     {L"No", no},
                     {L"Text", FakeValue::text(L"31.0.15")},
                     {L"R8", real},
                     {L"Texts", FakeValue::texts({L"a"})}}};
    EXPECT_EQ(query({"I2", "I4", "Yes", "No", "Text", "R8", "Texts"}), 0);
    EXPECT_EQ(values_, (Values{{"I2", "-3"},
                               {"I4", "-4"},
                               {"Yes", "True"},
                               {"No", "False"},
                               {"Text", "31.0.15"},
                               {"R8", ""},
                               {"Texts", ""}}));
}

TEST_F(WmiQueryTest, AnswersTheStepThatFailed) {
    com_.executeResult = E_FAIL;
    EXPECT_EQ(query({"A"}), 21);
    com_.executeResult = S_OK;
    com_.givesEnumerator = false;
    EXPECT_EQ(query({"A"}), 21);
    com_.blanketResult = E_FAIL;
    EXPECT_EQ(query({"A"}), 20);
    com_.givesServices = false;
    EXPECT_EQ(query({"A"}), 19);
    com_.createResult = E_FAIL;
    EXPECT_EQ(query({"A"}), 18);
}

} // namespace
