#include "hosts/gimp/GimpColorPicker.h"

#include <libgimp/gimp.h>
#include <libgimp/gimpui.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace plumet::hosts::gimp {

namespace {

bool RunGimpColorDialog(const char* title, double rgb[3]) {
    GtkWidget* dialog =
        gimp_dialog_new(title, "plumet-color", nullptr, GtkDialogFlags(0), nullptr, nullptr,
                        "_Cancel", GTK_RESPONSE_CANCEL, "_OK", GTK_RESPONSE_OK, nullptr);
    gtk_dialog_set_default_response(GTK_DIALOG(dialog), GTK_RESPONSE_OK);
    gtk_dialog_set_alternative_button_order(GTK_DIALOG(dialog), GTK_RESPONSE_OK,
                                            GTK_RESPONSE_CANCEL, -1);
    // The filter's own window stands over GIMP's; the selector comes above it.
    gimp_window_set_transient(GTK_WINDOW(dialog));
    gtk_window_set_keep_above(GTK_WINDOW(dialog), TRUE);

    GtkWidget* selection = gimp_color_selection_new();
    gimp_color_selection_set_show_alpha(GIMP_COLOR_SELECTION(selection), FALSE);
    GimpRGB color;
    gimp_rgba_set(&color, rgb[0], rgb[1], rgb[2], 1.0);
    gimp_color_selection_set_color(GIMP_COLOR_SELECTION(selection), &color);
    gimp_color_selection_set_old_color(GIMP_COLOR_SELECTION(selection), &color);
    gtk_container_set_border_width(GTK_CONTAINER(selection), 12);
    gtk_box_pack_start(GTK_BOX(gtk_dialog_get_content_area(GTK_DIALOG(dialog))), selection, TRUE,
                       TRUE, 0);
    gtk_widget_show(selection);

    const bool chosen = gimp_dialog_run(GIMP_DIALOG(dialog)) == GTK_RESPONSE_OK;
    if (chosen) {
        gimp_color_selection_get_color(GIMP_COLOR_SELECTION(selection), &color);
        rgb[0] = color.r;
        rgb[1] = color.g;
        rgb[2] = color.b;
    }
    gtk_widget_destroy(dialog);
    return chosen;
}

// The prompt, a length-prefixed string, as a title without its leading
// blanks and trailing colon.
std::string TitleFrom(const Str255* prompt) {
    std::string text = "Choose a colour";
    if (prompt && (*prompt)[0]) {
        text.assign(reinterpret_cast<const char*>(*prompt + 1), (*prompt)[0]);
        text.erase(0, text.find_first_not_of(' '));
        while (!text.empty() && (text.back() == ':' || text.back() == ' '))
            text.pop_back();
    }
    return text;
}

// Checks the request, runs `runDialog` with the title and the colour
// (0..1), and writes the answer back.
using ColorDialogRunner = bool (*)(const char* title, double rgb[3]);
OSErr AnswerColorServices(ColorServicesInfo* info, ColorDialogRunner runDialog) {
    if (!info || info->selector != plugIncolorServicesChooseColor ||
        info->sourceSpace != plugIncolorServicesRGBSpace ||
        (info->resultSpace != plugIncolorServicesRGBSpace &&
         info->resultSpace != plugIncolorServicesChosenSpace))
        return filterBadParameters;
    double rgb[3];
    for (int i = 0; i < 3; ++i)
        rgb[i] = std::clamp<int>(info->colorComponents[i], 0, 255) / 255.0;
    const std::string title = TitleFrom(info->selectorParameter.pickerPrompt);
    if (!runDialog(title.c_str(), rgb)) return userCanceledErr;
    for (int i = 0; i < 3; ++i)
        info->colorComponents[i] = int16(std::lround(std::clamp(rgb[i], 0.0, 1.0) * 255.0));
    info->colorComponents[3] = 0;
    info->resultSpace = plugIncolorServicesRGBSpace;
    info->resultGamutInfoValid = 1;
    info->resultInGamut = 1;
    return noErr;
}

} // namespace

OSErr ChooseColorWithGimp(ColorServicesInfo* info) {
    return AnswerColorServices(info, RunGimpColorDialog);
}

} // namespace plumet::hosts::gimp
