#pragma once

#include <d3d11.h>
#include <dxgi.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

// Text over pictures that lie on the card. Which text, where and how large is the caller's; here it is only
// laid out and drawn.
namespace vexil::platform {

/// In the terms of DirectWrite.
struct OverlayFont {
    const wchar_t* family;
    int weight;  ///< 400 is regular, 700 bold
    int stretch; ///< 5 is normal, 4 semi-condensed
    float pixelSize;
};

/// Red, green, blue and alpha, each from 0 to 1.
struct OverlayColor {
    float red;
    float green;
    float blue;
    float alpha;
};

class OverlayFormat {
public:
    virtual ~OverlayFormat() = default;
};

class OverlayText {
public:
    virtual ~OverlayText() = default;
};

/// Draws on a fixed list of targets, between `begin` and `end` of each. What is drawn blends with the
/// picture; nothing else on the device's context changes.
class OverlayPainter {
public:
    virtual ~OverlayPainter() = default;

    [[nodiscard]] virtual std::size_t targetCount() const = 0;

    // Null if it cannot be made.
    [[nodiscard]] virtual std::shared_ptr<const OverlayFormat> createFormat(const OverlayFont& font) = 0;
    /// Left-aligned from the top, broken into lines at `maximumWidth` pixels.
    [[nodiscard]] virtual std::shared_ptr<const OverlayText> layOut(const std::wstring& text,
                                                                    const OverlayFormat& format,
                                                                    float maximumWidth,
                                                                    float maximumHeight) = 0;

    virtual void begin(std::size_t target) = 0;
    /// With the target's white brush; the place is that of the text's top left corner in pixels.
    virtual void draw(std::size_t target, float x, float y, const OverlayText& text) = 0;
    /// With a brush that is made for this one text.
    virtual void draw(std::size_t target, float x, float y, const OverlayText& text,
                      const OverlayColor& color) = 0;
    /// The first failure since `begin`, if there was any.
    [[nodiscard]] virtual HRESULT end(std::size_t target) = 0;
};

/// For surfaces of the context's device. Throws `std::exception` if anything cannot be made.
[[nodiscard]] std::unique_ptr<OverlayPainter>
createOverlayPainter(const std::shared_ptr<ID3D11DeviceContext>& context,
                     const std::vector<std::shared_ptr<IDXGISurface>>& surfaces);

} // namespace vexil::platform
