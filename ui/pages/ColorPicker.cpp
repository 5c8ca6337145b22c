#include "ui/pages/ColorPicker.h"

#include "host/ModuleState.h"

#include <QColorDialog>
#include <algorithm>
#include <cstring>

namespace {
bool HostPick(std::array<std::uint16_t, 3>& color, const char* text) {
    Str255 prompt = {};
    prompt[0] = static_cast<unsigned char>(std::min<std::size_t>(std::strlen(text), 255));
    std::memcpy(prompt + 1, text, prompt[0]);
    ColorServicesInfo info{};
    info.infoSize = sizeof(ColorServicesInfo);
    info.selector = plugIncolorServicesChooseColor;
    info.sourceSpace = plugIncolorServicesRGBSpace;
    info.resultSpace = plugIncolorServicesRGBSpace;
    for (int i = 0; i < 3; ++i)
        info.colorComponents[i] = static_cast<int16>(color[i] / 256);
    info.selectorParameter.pickerPrompt = &prompt;
    if (gPluginParameters->colorServicesThunk(&info) != noErr) return false;
    for (int i = 0; i < 3; ++i)
        color[i] =
            static_cast<std::uint16_t>(std::clamp<int>(info.colorComponents[i], 0, 255) * 256);
    return true;
}
} // namespace

bool PickColor(QWidget* parent, std::array<std::uint16_t, 3>& color, const char* prompt) {
    if (gPluginParameters && gPluginParameters->colorServices &&
        gPluginParameters->colorServicesThunk)
        return HostPick(color, prompt);
    // The toolkit keeps the dialog's custom colours for the life of the
    // process.
    const QColor chosen =
        QColorDialog::getColor(QColor(color[0] >> 8, color[1] >> 8, color[2] >> 8), parent,
                               QString::fromLatin1(prompt).trimmed());
    if (!chosen.isValid()) return false;
    color = {static_cast<std::uint16_t>(chosen.red() * 256),
             static_cast<std::uint16_t>(chosen.green() * 256),
             static_cast<std::uint16_t>(chosen.blue() * 256)};
    return true;
}
