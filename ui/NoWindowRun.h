#pragma once

// The run without a window: the saved state is rendered at once into the
// host's image, as if OK had been pressed. Needs no display.
bool RunWithoutWindow();
