#include "utils/accessibility/svg_recoloring.h"

#include <gtest/gtest.h>

namespace vexil::utils::accessibility {
namespace {

TEST(SvgRecoloring, ReplacesTheFirstFillColourWhereverItStands) {
    EXPECT_EQ(
        recolorSvg(R"(<svg><path fill="#AbC" stroke="#abc"/><path fill="#ABC"/><path fill="#123"/></svg>)",
                   "#ffffff"),
        R"(<svg><path fill="#ffffff" stroke="#ffffff"/><path fill="#ffffff"/><path fill="#123"/></svg>)");
}

TEST(SvgRecoloring, ReplacesTheTextOfTheColourInsideOtherWordsToo) {
    EXPECT_EQ(recolorSvg(R"(<svg id="redness"><path fill="red"/></svg>)", "#000000"),
              R"(<svg id="#000000ness"><path fill="#000000"/></svg>)");
}

TEST(SvgRecoloring, CopiesAPictureWithoutAFillUnchanged) {
    for (const char* svg : {"", "<svg/>", "<svg fill='red'/>", R"(<svg FILL="red"/>)", R"(<svg fill="red)"}) {
        EXPECT_EQ(recolorSvg(svg, "#000000"), svg);
    }
}

TEST(SvgRecoloring, LeavesAPictureWithAnEmptyFillUnchanged) {
    EXPECT_EQ(recolorSvg(R"(<svg fill=""/>)", "#000000"), R"(<svg fill=""/>)");
}

TEST(SvgRecoloring, FindsThePathBetweenQuotationMarks) {
    EXPECT_EQ(quotedPath(R"(url(":/a.svg") url(":/b.svg"))"), ":/a.svg");
    EXPECT_EQ(quotedPath(R"(url("")x")"), ")x");
    EXPECT_EQ(quotedPath("url(:/a.svg)"), std::nullopt);
    EXPECT_EQ(quotedPath(R"(url(":/a.svg))"), std::nullopt);
    EXPECT_EQ(quotedPath(R"("")"), std::nullopt);
    EXPECT_EQ(quotedPath(""), std::nullopt);
}

TEST(SvgRecoloring, NamesTheCopyAfterTheResource) {
    EXPECT_EQ(svgBaseName(R"(  url(":/question.svg") )"), "question");
    EXPECT_EQ(svgBaseName(R"(url(":/a=b.svg"))"), "ab");
    EXPECT_EQ(svgBaseName(R"(url(":/icons/a.svg"))"), "icons/a");
    EXPECT_EQ(svgBaseName(R"(url(":/.svg"))"), "");
    EXPECT_EQ(svgBaseName(R"(url("/tmp/a.svg"))"), R"(url("/tmp/a)");
}

} // namespace
} // namespace vexil::utils::accessibility
