#include "module/video_card/stress/rendering/d2d_renderer.h"
#include "module/video_card/stress/rendering/gui_application.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QTranslator>

#include <exception>
#include <sstream>
#include <string>
#include <vector>

// What is drawn where: the rules, with a painter that writes down what it is asked for.
namespace vexil::tests {
namespace {

using namespace module::video_card;
using testing::ElementsAre;
using testing::IsEmpty;
using Lines = std::vector<std::wstring>;

struct NamedFormat final : platform::OverlayFormat {
    std::wstring name;
};

struct NamedText final : platform::OverlayText {
    std::wstring name;
};

struct Painted {
    Lines lines;
    std::size_t targets = 2;
    bool refusesFormats = false;
    bool refusesTexts = false;
    HRESULT endOfFirst = S_OK;
};

class WritingPainter final : public platform::OverlayPainter {
public:
    explicit WritingPainter(Painted& painted) : painted_(painted) {}

    std::size_t targetCount() const override { return painted_.targets; }
    std::shared_ptr<const platform::OverlayFormat> createFormat(const platform::OverlayFont& font) override {
        if (painted_.refusesFormats) {
            return nullptr;
        }
        auto format = std::make_shared<NamedFormat>();
        std::wostringstream name;
        name << font.family << L' ' << font.weight << L' ' << font.stretch << L' ' << font.pixelSize;
        format->name = name.str();
        return format;
    }
    std::shared_ptr<const platform::OverlayText> layOut(const std::wstring& text,
                                                        const platform::OverlayFormat& format, float width,
                                                        float height) override {
        if (painted_.refusesTexts) {
            return nullptr;
        }
        auto layout = std::make_shared<NamedText>();
        layout->name = text;
        std::wostringstream line;
        line << L"layOut " << text << L" in " << static_cast<const NamedFormat&>(format).name << L" within "
             << width << L" by " << height;
        painted_.lines.push_back(line.str());
        return layout;
    }
    void begin(std::size_t target) override { painted_.lines.push_back(L"begin " + std::to_wstring(target)); }
    void draw(std::size_t target, float x, float y, const platform::OverlayText& text) override {
        std::wostringstream line;
        line << L"draw on " << target << L" at " << x << L", " << y << L": "
             << static_cast<const NamedText&>(text).name;
        painted_.lines.push_back(line.str());
    }
    void draw(std::size_t target, float x, float y, const platform::OverlayText& text,
              const platform::OverlayColor& color) override {
        draw(target, x, y, text);
        std::wostringstream line;
        line << L"colored " << color.red << L' ' << color.green << L' ' << color.blue << L' ' << color.alpha;
        painted_.lines.push_back(line.str());
    }
    HRESULT end(std::size_t target) override {
        painted_.lines.push_back(L"end " + std::to_wstring(target));
        return target == 0 ? painted_.endOfFirst : S_OK;
    }

private:
    Painted& painted_;
};

/// Translates the instruction, as the host's language file does.
class Instruction final : public QTranslator {
public:
    QString translate(const char* context, const char* source, const char*, int) const override {
        return QString::fromLatin1(context) == QLatin1String("VIDEO_CARD") &&
                       QString::fromLatin1(source) == QLatin1String("ESC_INSTRUCTION")
                   ? QStringLiteral("Press Esc to leave")
                   : QString();
    }
    bool isEmpty() const override { return false; }
};

class OverlayRules : public testing::Test {
protected:
    static void SetUpTestSuite() {
        startGuiApplication();
        static Instruction instruction;
        QCoreApplication::installTranslator(&instruction);
    }

    D2DRenderer overlay(int dpi = 96) {
        D2DRenderer renderer(
            std::make_unique<WritingPainter>(painted_), [dpi] { return dpi; }, 800, 600, 90);
        renderer.setFpsLabel(L"F");
        renderer.setUsageLabel(L"U");
        renderer.setTemperatureLabel(L"T");
        return renderer;
    }
    Lines taken() { return std::exchange(painted_.lines, {}); }

    static std::wstring rightEdge() {
        const QFontMetrics metrics(QFont(QStringLiteral("Lato"), 14, 600));
        return std::to_wstring(800 - metrics.size(256, QStringLiteral("Press Esc to leave")).width());
    }

    Painted painted_;
    const StressSample sample_{60, true, 50, true, 99, true};
};

TEST_F(OverlayRules, DrawNothingBeforeTheFirstSample) {
    auto renderer = overlay();
    renderer.setFullScreen(true);
    EXPECT_EQ(renderer.draw(), 1);
    EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(OverlayRules, DrawTheFiguresOnEachTargetInAWindowAndNoInstruction) {
    auto renderer = overlay();
    EXPECT_FALSE(renderer.update(sample_));
    EXPECT_THAT(taken(),
                ElementsAre(L"layOut F: 60\nU: 99%\nT: 50\u00B0C\n in Lato 900 5 20 within 800 by 600"));
    EXPECT_EQ(renderer.draw(), 0);
    EXPECT_THAT(taken(),
                ElementsAre(L"begin 0", L"draw on 0 at 1, 1: F: 60\nU: 99%\nT: 50\u00B0C\n", L"end 0",
                            L"begin 1", L"draw on 1 at 1, 1: F: 60\nU: 99%\nT: 50\u00B0C\n", L"end 1"));
}

TEST_F(OverlayRules, DrawTheInstructionAtTheTopRightOfAFullScreenAndLayItOutForEachFrame) {
    auto renderer = overlay();
    renderer.setFullScreen(true);
    EXPECT_FALSE(renderer.update({60, true, 0, false, 0, false}));
    static_cast<void>(taken());
    const std::wstring place = L" at " + rightEdge() + L", 0: Press Esc to leave";
    for (int frame = 0; frame < 2; ++frame) {
        EXPECT_EQ(renderer.draw(), 0);
        EXPECT_THAT(taken(), ElementsAre(L"layOut Press Esc to leave in Lato 600 4 20 within 800 by 600",
                                         L"begin 0", L"draw on 0 at 1, 1: F: 60\n", L"draw on 0" + place,
                                         L"colored 0.6313 0.6313 0.6313 1", L"end 0", L"begin 1",
                                         L"draw on 1 at 1, 1: F: 60\n", L"draw on 1" + place,
                                         L"colored 0.6313 0.6313 0.6313 1", L"end 1"));
    }
}

TEST_F(OverlayRules, TakeTheInstructionsSizeFromTheMonitor) {
    auto renderer = overlay(144);
    renderer.setFullScreen(true);
    EXPECT_FALSE(renderer.update(sample_));
    static_cast<void>(taken());
    EXPECT_EQ(renderer.draw(), 0);
    EXPECT_EQ(taken().front(), L"layOut Press Esc to leave in Lato 600 4 18 within 800 by 600");
}

TEST_F(OverlayRules, KeepTheOldTextWhereNoneCanBeLaidOut) {
    auto renderer = overlay();
    EXPECT_FALSE(renderer.update({60, true, 0, false, 0, false}));
    painted_.refusesTexts = true;
    EXPECT_TRUE(renderer.update({61, true, 0, false, 0, false}));
    static_cast<void>(taken());
    EXPECT_EQ(renderer.draw(), 0);
    EXPECT_EQ(taken()[1], L"draw on 0 at 1, 1: F: 60\n");
}

TEST_F(OverlayRules, DrawTheFiguresWhereTheInstructionCannotBeLaidOut) {
    auto renderer = overlay();
    renderer.setFullScreen(true);
    EXPECT_FALSE(renderer.update({60, true, 0, false, 0, false}));
    painted_.refusesFormats = true;
    static_cast<void>(taken());
    EXPECT_EQ(renderer.draw(), 0);
    EXPECT_THAT(taken(), ElementsAre(L"begin 0", L"draw on 0 at 1, 1: F: 60\n", L"end 0", L"begin 1",
                                     L"draw on 1 at 1, 1: F: 60\n", L"end 1"));
}

TEST_F(OverlayRules, EndWithTheFirstTargetThatFails) {
    auto renderer = overlay();
    EXPECT_FALSE(renderer.update(sample_));
    painted_.endOfFirst = E_FAIL;
    static_cast<void>(taken());
    EXPECT_EQ(renderer.draw(), E_FAIL);
    EXPECT_EQ(taken().back(), L"end 0") << "the second target is left alone";
}

TEST_F(OverlayRules, ThrowWhereTheFiguresHaveNoFormat) {
    painted_.refusesFormats = true;
    EXPECT_THROW(overlay(), std::exception);
}

} // namespace
} // namespace vexil::tests
