// Makes the filter's own window the one that a run with a window shows, with
// its about box and the final renderer's settings dialog.
#pragma once

void InstallFilterWindow();
