// Makes the filter's own window the one that a run with a window shows, with
// its about box.
#pragma once

void InstallFilterWindow();
