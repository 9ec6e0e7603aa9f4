#pragma once

/// Draws a whole interaction with widgets of its own, on the GUI thread.
class AbstractWidgetWrapper;
