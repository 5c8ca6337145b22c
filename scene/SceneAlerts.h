// What the scene asks of the window: telling the user something, such as
// the limit of lights, and letting the user choose a colour. The window
// installs the functions. Until it does, alerts go to standard error, as
// in the run without a window, and no colour is chosen.
#pragma once

#include <cstdint>

using SceneAlertFunction = void (*)(int stringId);
// Opens the colour picker with `prompt` over the colour `rgb` (three 16-bit
// components) and answers true with the chosen colour in `rgb`; false on
// Cancel, with `rgb` as it was.
using ScenePickColorFunction = bool (*)(const char* prompt, std::uint16_t rgb[3]);

// Installs the function; null goes back to standard error.
void SetSceneAlert(SceneAlertFunction function);
void SceneAlert(int stringId);
// Installs the colour picker; null means none.
void SetScenePickColor(ScenePickColorFunction function);
bool ScenePickColor(const char* prompt, std::uint16_t rgb[3]);
