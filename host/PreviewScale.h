#pragma once

// The integer reduction of the interactive view, so that a selection of
// width by height pixels fits on a desktop of the given client size with
// room for the window's controls. 1 is full size.
int ComputePreviewScale(int width, int height, int desktopWidth, int desktopHeight);
