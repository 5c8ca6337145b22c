// The larger pictures of the module, drawn here for this product: the logo
// of the main window, the page of the Help window and the about box. They
// are drawn with the toolkit's painter and its fonts, so they are made only
// while a window session runs.
#pragma once

#include <QImage>

enum PictureId : int {
    kPictureLogo = 130,  // 62 by 54
    kPictureHelp = 157,  // 498 by 1875
    kPictureAbout = 158, // 496 by 282
};

// The picture `id` at its own size, or a null image for an unknown id.
QImage LoadPicture(int id);

// The picture `id` drawn for `width` by `height` pixels, as a bitmap that is
// loaded at the size of the control that shows it.
QImage LoadPicture(int id, int width, int height);
