#pragma once

// The terminal that the program talks to.
namespace vexil::host::platform {

enum class Stream { Output, Error };

/// Makes the console take UTF-8 and escape sequences, where it must be told.
void prepareConsole();

/// Whether a person watches the stream on a terminal that understands escape sequences.
[[nodiscard]] bool isTerminal(Stream stream);

/// Columns of the terminal; 80 where nothing tells.
[[nodiscard]] unsigned terminalWidth();

/// Lines of the terminal; 24 where nothing tells.
[[nodiscard]] unsigned terminalHeight();

/// Whether the terminal shows UTF-8.
[[nodiscard]] bool terminalShowsUtf8();

} // namespace vexil::host::platform
