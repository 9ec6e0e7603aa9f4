#include "platform/overlay_painter.h"

#include <d2d1.h>
#include <dwrite.h>
#include <windows.h>

#include <stdexcept>
#include <utility>

namespace vexil::platform {

namespace {

constexpr const wchar_t* directWriteLibrary = L"C:\\WINDOWS\\system32\\dwrite.dll";
constexpr const wchar_t* direct2dLibrary = L"C:\\WINDOWS\\system32\\d2d1.dll";
constexpr const wchar_t* locale = L"en-GB";
constexpr D2D1_COLOR_F white{1, 1, 1, 1};

constexpr IID directWriteFactoryId{
    0xB859EE5A, 0xD838, 0x4B5B, {0xA2, 0xE8, 0x1A, 0xDC, 0x7D, 0x93, 0xDB, 0x48}};
constexpr IID direct2dFactoryId{0x06152247, 0x6F50, 0x465A, {0x92, 0x45, 0x11, 0x8B, 0xFD, 0x3B, 0x60, 0x07}};

using CreateDirectWriteFactory = HRESULT(WINAPI*)(DWRITE_FACTORY_TYPE, REFIID, IUnknown**);
using CreateDirect2dFactory = HRESULT(WINAPI*)(D2D1_FACTORY_TYPE, REFIID, const D2D1_FACTORY_OPTIONS*,
                                               void**);

template <typename T>
std::shared_ptr<T> take(T* object) {
    return object == nullptr ? std::shared_ptr<T>()
                             : std::shared_ptr<T>(object, [](T* owned) { owned->Release(); });
}

/// Calls `create(T**)`, and takes over what it made.
template <typename T, typename Create>
HRESULT make(std::shared_ptr<T>& owner, Create create) {
    T* object = nullptr;
    const HRESULT result = create(&object);
    if (SUCCEEDED(result)) {
        owner = take(object);
    }
    return result;
}

void orThrow(HRESULT result, const char* text) {
    if (FAILED(result)) {
        throw std::runtime_error(text);
    }
}

/// Null if there is no such library or function. The library stays, as its factories do not say when they are
/// gone.
template <typename Function>
Function systemFunction(const wchar_t* path, const char* name) {
    const HMODULE library = LoadLibraryExW(path, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    static_assert(LOAD_LIBRARY_SEARCH_SYSTEM32 == 2048);
    return library == nullptr
               ? nullptr
               : reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

std::shared_ptr<IDWriteFactory> createDirectWrite() {
    const auto create = systemFunction<CreateDirectWriteFactory>(directWriteLibrary, "DWriteCreateFactory");
    std::shared_ptr<IDWriteFactory> factory;
    orThrow(create == nullptr ? E_NOINTERFACE
                              : make(factory,
                                     [&](IDWriteFactory** out) {
                                         return create(DWRITE_FACTORY_TYPE_SHARED, directWriteFactoryId,
                                                       reinterpret_cast<IUnknown**>(out));
                                     }),
            "Failed to create DirectWrite factory");
    return factory;
}

std::shared_ptr<ID2D1Factory> createDirect2d() {
    const auto create = systemFunction<CreateDirect2dFactory>(direct2dLibrary, "D2D1CreateFactory");
    std::shared_ptr<ID2D1Factory> factory;
    orThrow(create == nullptr ? E_NOINTERFACE
                              : make(factory,
                                     [&](ID2D1Factory** out) {
                                         return create(D2D1_FACTORY_TYPE_MULTI_THREADED, direct2dFactoryId,
                                                       nullptr, reinterpret_cast<void**>(out));
                                     }),
            "Failed to create Direct2D factory");
    return factory;
}

class WrittenFormat final : public OverlayFormat {
public:
    explicit WrittenFormat(std::shared_ptr<IDWriteTextFormat> format) : format_(std::move(format)) {}
    [[nodiscard]] IDWriteTextFormat* get() const { return format_.get(); }

private:
    std::shared_ptr<IDWriteTextFormat> format_;
};

class WrittenText final : public OverlayText {
public:
    explicit WrittenText(std::shared_ptr<IDWriteTextLayout> layout) : layout_(std::move(layout)) {}
    [[nodiscard]] IDWriteTextLayout* get() const { return layout_.get(); }

private:
    std::shared_ptr<IDWriteTextLayout> layout_;
};

class Direct2dOverlayPainter final : public OverlayPainter {
public:
    explicit Direct2dOverlayPainter(const std::vector<std::shared_ptr<IDXGISurface>>& surfaces)
        : directWrite_(createDirectWrite()), direct2d_(createDirect2d()) {
        for (const auto& surface : surfaces) {
            addTarget(*surface);
        }
    }

    std::size_t targetCount() const override { return targets_.size(); }

    std::shared_ptr<const OverlayFormat> createFormat(const OverlayFont& font) override {
        std::shared_ptr<IDWriteTextFormat> format;
        const HRESULT result = make(format, [&](auto out) {
            return directWrite_->CreateTextFormat(
                font.family, nullptr, static_cast<DWRITE_FONT_WEIGHT>(font.weight), DWRITE_FONT_STYLE_NORMAL,
                static_cast<DWRITE_FONT_STRETCH>(font.stretch), font.pixelSize, locale, out);
        });
        if (FAILED(result) || !format) {
            return nullptr;
        }
        static_cast<void>(format->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_LEADING));
        static_cast<void>(format->SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT_NEAR));
        return std::make_shared<WrittenFormat>(std::move(format));
    }

    std::shared_ptr<const OverlayText> layOut(const std::wstring& text, const OverlayFormat& format,
                                              float maximumWidth, float maximumHeight) override {
        std::shared_ptr<IDWriteTextLayout> layout;
        const HRESULT result = make(layout, [&](auto out) {
            return directWrite_->CreateTextLayout(text.c_str(), static_cast<UINT32>(text.size()),
                                                  static_cast<const WrittenFormat&>(format).get(),
                                                  maximumWidth, maximumHeight, out);
        });
        return FAILED(result) || !layout ? nullptr : std::make_shared<WrittenText>(std::move(layout));
    }

    void begin(std::size_t target) override {
        result_ = S_OK;
        targets_[target].first->BeginDraw();
    }

    void draw(std::size_t target, float x, float y, const OverlayText& text) override {
        drawWith(target, x, y, text, *targets_[target].second);
    }

    void draw(std::size_t target, float x, float y, const OverlayText& text,
              const OverlayColor& color) override {
        const D2D1_COLOR_F brushColor{color.red, color.green, color.blue, color.alpha};
        std::shared_ptr<ID2D1SolidColorBrush> brush;
        const HRESULT result = createBrush(*targets_[target].first, brushColor, brush);
        if (FAILED(result)) {
            result_ = FAILED(result_) ? result_ : result;
            return;
        }
        drawWith(target, x, y, text, *brush);
    }

    HRESULT end(std::size_t target) override {
        const HRESULT result = targets_[target].first->EndDraw(nullptr, nullptr);
        return FAILED(result_) ? result_ : result;
    }

private:
    using Target = std::pair<std::shared_ptr<ID2D1RenderTarget>, std::shared_ptr<ID2D1SolidColorBrush>>;

    static HRESULT createBrush(ID2D1RenderTarget& target, const D2D1_COLOR_F& color,
                               std::shared_ptr<ID2D1SolidColorBrush>& brush) {
        return make(brush, [&](auto out) { return target.CreateSolidColorBrush(&color, nullptr, out); });
    }

    void addTarget(IDXGISurface& surface) {
        D2D1_RENDER_TARGET_PROPERTIES properties{};
        properties.type = D2D1_RENDER_TARGET_TYPE_DEFAULT;
        properties.pixelFormat = {DXGI_FORMAT_B8G8R8A8_UNORM, D2D1_ALPHA_MODE_IGNORE};
        properties.usage = D2D1_RENDER_TARGET_USAGE_NONE;
        properties.minLevel = D2D1_FEATURE_LEVEL_DEFAULT;
        Target target;
        orThrow(make(target.first,
                     [&](auto out) {
                         return direct2d_->CreateDxgiSurfaceRenderTarget(&surface, &properties, out);
                     }),
                "Failed to create overlay target");
        orThrow(createBrush(*target.first, white, target.second), "Failed to create brush");
        targets_.push_back(std::move(target));
    }

    void drawWith(std::size_t target, float x, float y, const OverlayText& text, ID2D1Brush& brush) {
        targets_[target].first->DrawTextLayout({x, y}, static_cast<const WrittenText&>(text).get(), &brush,
                                               D2D1_DRAW_TEXT_OPTIONS_NONE);
    }

    std::shared_ptr<IDWriteFactory> directWrite_;
    std::shared_ptr<ID2D1Factory> direct2d_;
    std::vector<Target> targets_;
    HRESULT result_ = S_OK;
};

} // namespace

std::unique_ptr<OverlayPainter>
createOverlayPainter(const std::shared_ptr<ID3D11DeviceContext>&,
                     const std::vector<std::shared_ptr<IDXGISurface>>& surfaces) {
    return std::make_unique<Direct2dOverlayPainter>(surfaces);
}

} // namespace vexil::platform
