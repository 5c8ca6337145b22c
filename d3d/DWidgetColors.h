// Colours shared by the grid and the widgets.
#pragma once

// The grey of grid and widgets: 32125 of 65535 on each channel.
inline constexpr float kWidgetGrey = 32125.0f / 65535.0f;
