// How the scene tells the user something, such as the limit of lights:
// the window installs the function that shows a string of the module over
// its active window. Until one is installed the text goes to standard
// error, as in the run without a window.
#pragma once

using SceneAlertFunction = void (*)(int stringId);

// Installs the function; null goes back to standard error.
void SetSceneAlert(SceneAlertFunction function);
void SceneAlert(int stringId);
