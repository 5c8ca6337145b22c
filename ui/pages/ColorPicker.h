// The colour picker of the colour buttons: the host's own when it offers
// colorServices, the toolkit's colour dialog otherwise.
#pragma once

#include <array>
#include <cstdint>

class QWidget;

// Asks for a colour, starting from `color`, three 16-bit components, with
// `prompt` (" Select color:" for the colour buttons). False when the user
// cancelled or the picker failed; `color` is then unchanged.
bool PickColor(QWidget* parent, std::array<std::uint16_t, 3>& color,
               const char* prompt = " Select color:");
