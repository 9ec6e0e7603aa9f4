#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace vexil::host {

/// What the output is written to.
struct TerminalTraits {
    bool interactive = false; ///< a person watches: lines may be drawn anew
    bool colours = false;
    bool utf8 = false;
    unsigned width = 100; ///< columns
    unsigned height = 24; ///< lines
};

enum class Style { Plain, Bold, Dim, Good, Bad, Warning };

/// Writes for people, in the ways that the terminal allows.
class Terminal {
public:
    Terminal(std::ostream& out, TerminalTraits traits) : out_(out), traits_(traits) {}

    [[nodiscard]] const TerminalTraits& traits() const { return traits_; }

    /// The text in the style's colour, or as it stands where there are no colours.
    [[nodiscard]] std::string paint(std::string_view text, Style style) const;
    /// One of the two, by what the terminal shows.
    [[nodiscard]] std::string_view glyph(std::string_view utf8, std::string_view ascii) const;

    void line(std::string_view text = {});
    /// The text indented and broken between words, so that it stays inside the terminal.
    void paragraph(std::string_view text, std::size_t indent, Style style = Style::Plain);
    /// Draws the line over the one that stands at the cursor, and leaves the cursor on it.
    void redraw(std::string_view text);
    /// Draws the lines over those of the call before, unless a line was written since. Each must fit into the
    /// width; what the terminal has no lines for is left out.
    void redrawBlock(const std::vector<std::string>& lines);

private:
    std::ostream& out_;
    TerminalTraits traits_;
    std::size_t drawnLines_ = 0;
};

/// Columns that a UTF-8 text takes, with one for each character.
[[nodiscard]] std::size_t columns(std::string_view text);
/// The text filled with blanks up to a width; a longer one is cut, with dots at its end.
[[nodiscard]] std::string fit(std::string_view text, std::size_t width);
/// The text with blanks in front of it up to a width; a longer one stays as it is.
[[nodiscard]] std::string alignRight(std::string_view text, std::size_t width);
/// The text broken between words into lines of at most `width` columns.
[[nodiscard]] std::vector<std::string> wrap(std::string_view text, std::size_t width);

} // namespace vexil::host
