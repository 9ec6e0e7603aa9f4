#include "simulated/direct3d/call_log.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <span>
#include <vector>

namespace vexil::simulated {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(CallLog, HandsOutItsLinesOnce) {
    CallLog log;
    log.add("a");
    log.add("b");
    EXPECT_THAT(log.take(), ElementsAre("a", "b"));
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST(CallLog, NamesObjectsByKindAndNumber) {
    CallLog log;
    const int objects[3] = {};
    EXPECT_EQ(log.nameNew(&objects[0], "texture"), "texture#1");
    EXPECT_EQ(log.nameNew(&objects[1], "buffer"), "buffer#1");
    EXPECT_EQ(log.nameNew(&objects[2], "texture"), "texture#2");
    EXPECT_EQ(log.nameOf(&objects[0]), "texture#1");
    EXPECT_EQ(log.nameOf(&objects[2]), "texture#2");
    EXPECT_EQ(log.nameOf(nullptr), "null");
    const int stranger = 0;
    EXPECT_EQ(log.nameOf(&stranger), "?");
}

TEST(CallLog, TakesTheLastNameOfAnAddressThatIsUsedAgain) {
    CallLog log;
    const int object = 0;
    log.nameNew(&object, "texture");
    log.nameNew(&object, "texture");
    EXPECT_EQ(log.nameOf(&object), "texture#2");
}

TEST(ContentMark, TellsContentsApartByEveryByteAndLength) {
    std::vector<std::byte> content(37);
    const auto mark = contentMark(content);
    EXPECT_EQ(mark.size(), 16U);
    EXPECT_EQ(contentMark(content), mark);
    for (auto& byte : content) {
        byte = std::byte{1};
        EXPECT_NE(contentMark(content), mark);
        byte = std::byte{0};
    }
    EXPECT_NE(contentMark(std::span(content).first(24)), mark);
}

} // namespace
} // namespace vexil::simulated
