// The GIMP bridge end to end: gimp-console runs Script-Fu scripts that make
// images, run filters through the bridge without a window, and save what
// came out.
#include "GimpBatch.h"
#include "TestSupport.h"
#include "sdk/PIFilter.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace plumet::hosts;
using namespace plumet::hosts::testing;

namespace {

// Definitions the scripts share.
const char* kPrelude = R"(
(gimp-context-set-antialias FALSE)
(gimp-context-set-feather FALSE)
(define (flat-image w h colour)
  (let* ((image (car (gimp-image-new w h RGB)))
         (layer (car (gimp-layer-new image w h RGB-IMAGE "flat" 100 LAYER-MODE-NORMAL))))
    (gimp-image-insert-layer image layer 0 0)
    (gimp-context-set-foreground colour)
    (gimp-drawable-fill layer FILL-FOREGROUND)
    (list image layer)))
(define (transparent-layer image w h name)
  (let ((layer (car (gimp-layer-new image w h RGBA-IMAGE name 100 LAYER-MODE-NORMAL))))
    (gimp-image-insert-layer image layer 0 0)
    (gimp-drawable-fill layer FILL-TRANSPARENT)
    layer))
(define (save image layer file)
  (file-png-save-defaults RUN-NONINTERACTIVE image layer
                          (string-append "@OUT@/" file) file))
)";

bool GimpRan(const GimpBatch& batch) {
    if (std::string(GIMP_CONSOLE).empty() || std::string(GIMP_GUI).empty() ||
        std::string(XVFB_RUN).empty()) {
        ADD_FAILURE() << "gimp-console, gimp or xvfb-run was not found when the tests were "
                         "configured (scripts/deps.sh installs them)";
        return false;
    }
    EXPECT_TRUE(batch.finished) << "GIMP did not run the script to its end:\n" << batch.log;
    EXPECT_EQ(batch.log.find("crashed"), std::string::npos) << batch.log;
    EXPECT_EQ(batch.log.find("Sanitizer"), std::string::npos) << batch.log;
    return batch.finished;
}

bool Same(const uint8_t* px, std::initializer_list<int> values) {
    int i = 0;
    for (const int v : values)
        if (px[i++] != v) return false;
    return true;
}

// The selector lines of the test filter's log: "selector case=N ...".
std::vector<std::pair<int, int>> SelectorsAndCases(const std::string& log) {
    std::vector<std::pair<int, int>> calls;
    std::istringstream in(log);
    std::string line;
    while (std::getline(in, line)) {
        int selector = -1, filterCase = -1;
        if (std::sscanf(line.c_str(), "%d case=%d", &selector, &filterCase) == 2)
            calls.emplace_back(selector, filterCase);
    }
    return calls;
}

} // namespace

// The inverting test filter: a rectangle, an ellipse (whose bounding box the
// filter gets whole) on a 16-bit image, a free and a locked transparency, and
// the repeat from the kept record.
TEST(GimpBridge, SelectionShapeLockedTransparencyAndRepeat) {
    const std::string filterLog = ScratchDir("gimp_filter_log") + "/selectors.log";
    const GimpBatch batch = RunGimpScript("shapes", {TestFilterPath()}, std::string(kPrelude) + R"(
(let* ((il (flat-image 64 48 '(200 100 50))) (image (car il)) (layer (cadr il)))
  (gimp-image-select-rectangle image CHANNEL-OP-REPLACE 10 8 30 22)
  (plug-in-test-invert RUN-NONINTERACTIVE image layer)
  (save image layer "rect.png"))
(let* ((il (flat-image 64 64 '(200 100 50))) (image (car il)) (layer (cadr il)))
  (gimp-image-convert-precision image PRECISION-U16-GAMMA)
  (gimp-image-select-ellipse image CHANNEL-OP-REPLACE 8 8 48 48)
  (plug-in-test-invert RUN-WITH-LAST-VALS image layer)
  (save image layer "ellipse.png"))
(let* ((image (car (gimp-image-new 32 32 RGB)))
       (free (transparent-layer image 32 32 "free"))
       (locked (transparent-layer image 32 32 "locked")))
  (gimp-layer-set-lock-alpha locked TRUE)
  (plug-in-test-invert RUN-NONINTERACTIVE image free)
  (plug-in-test-invert RUN-NONINTERACTIVE image locked)
  (save image free "free.png")
  (save image locked "locked.png"))
)",
                                          GimpOptions{{"TESTFILTER_LOG=" + filterLog}, "", ""});
    if (!GimpRan(batch)) return;

    const HostImage rect = ReadPicture(batch, "rect.png");
    ASSERT_EQ(rect.width, 64);
    int wrong = 0;
    for (int r = 0; r < rect.height; ++r)
        for (int c = 0; c < rect.width; ++c) {
            const bool inside = r >= 8 && r < 30 && c >= 10 && c < 40;
            wrong += !Same(rect.Pixel(r, c), inside ? std::initializer_list<int>{55, 155, 205}
                                                    : std::initializer_list<int>{200, 100, 50});
        }
    EXPECT_EQ(wrong, 0) << "pixels inverted outside the rectangle or left inside it";

    const HostImage ellipse = ReadPicture(batch, "ellipse.png");
    ASSERT_EQ(ellipse.width, 64);
    EXPECT_TRUE(Same(ellipse.Pixel(32, 32), {55, 155, 205}));
    EXPECT_TRUE(Same(ellipse.Pixel(31, 9), {55, 155, 205}));
    for (const auto& [r, c] : {std::pair{9, 9}, {9, 54}, {54, 9}, {54, 54}, {2, 2}})
        EXPECT_TRUE(Same(ellipse.Pixel(r, c), {200, 100, 50}))
            << "corner of the ellipse's box at " << r << "," << c << " was changed";

    const HostImage free = ReadPicture(batch, "free.png");
    const HostImage locked = ReadPicture(batch, "locked.png");
    ASSERT_TRUE(free.hasAlpha && locked.hasAlpha);
    EXPECT_EQ(free.Pixel(16, 16)[3], 255) << "an editable transparency is the filter's to change";
    EXPECT_EQ(locked.Pixel(16, 16)[3], 0) << "a locked transparency must stay as it was";

    // Parameters only on the first run; every later run repeats from the
    // kept record. The starts show the filter case of each drawable.
    std::vector<int> parameters, starts;
    for (const auto& [selector, filterCase] : SelectorsAndCases(ReadText(filterLog))) {
        if (selector == filterSelectorParameters) parameters.push_back(filterCase);
        if (selector == filterSelectorStart) starts.push_back(filterCase);
    }
    EXPECT_EQ(parameters, std::vector<int>({filterCaseFlatImageWithSelection}));
    EXPECT_EQ(starts,
              std::vector<int>({filterCaseFlatImageWithSelection, filterCaseFlatImageWithSelection,
                                filterCaseEditableTransparencyNoSelection,
                                filterCaseProtectedTransparencyNoSelection}));
}

// The real filter without a window: text with its own alpha on a transparent
// layer, and nothing changed outside a selected rectangle of a flat image.
TEST(GimpBridge, RealFilterPutsTextIntoTheLayerAndHonoursTheSelection) {
    const GimpBatch batch =
        RunGimpScript("plumet", {PLUMET_FILTER_MODULE}, std::string(kPrelude) + R"(
(let* ((image (car (gimp-image-new 320 200 RGB)))
       (layer (transparent-layer image 320 200 "text")))
  (plug-in-flyword-plumet RUN-NONINTERACTIVE image layer)
  (save image layer "transparent.png"))
(let* ((il (flat-image 320 200 '(255 255 255))) (image (car il)) (layer (cadr il)))
  (gimp-image-select-rectangle image CHANNEL-OP-REPLACE 60 40 200 120)
  (plug-in-flyword-plumet RUN-NONINTERACTIVE image layer)
  (save image layer "selected.png"))
)");
    if (!GimpRan(batch)) return;

    const HostImage text = ReadPicture(batch, "transparent.png");
    ASSERT_TRUE(text.hasAlpha);
    int covered = 0, colouredWhereCovered = 0;
    for (int r = 0; r < text.height; ++r)
        for (int c = 0; c < text.width; ++c) {
            const uint8_t* px = text.Pixel(r, c);
            if (px[3] == 0) continue;
            ++covered;
            colouredWhereCovered += px[0] || px[1] || px[2];
        }
    // The layer was transparent everywhere: all its alpha is the text's.
    EXPECT_GT(covered, text.width * text.height / 50) << "no text came into the layer";
    EXPECT_LT(covered, text.width * text.height / 2) << "the whole layer was covered";
    EXPECT_GT(colouredWhereCovered, covered / 2);

    const HostImage flat = ReadPicture(batch, "selected.png");
    ASSERT_EQ(flat.width, 320);
    int changedOutside = 0, changedInside = 0;
    for (int r = 0; r < flat.height; ++r)
        for (int c = 0; c < flat.width; ++c) {
            const bool white = Same(flat.Pixel(r, c), {255, 255, 255});
            if (r >= 40 && r < 160 && c >= 60 && c < 260)
                changedInside += !white;
            else
                changedOutside += !white;
        }
    EXPECT_EQ(changedOutside, 0);
    EXPECT_GT(changedInside, 200 * 120 / 50) << "no text inside the selection";
}

// GIMP with its windows, on a virtual screen: the result of a run without a
// window goes away with one undo; the filter's window opens over the image
// window that started it and ends the run when the user quits it; the
// filter's request for a colour opens GIMP's
// colour selector, which answers the colour on OK and a cancel on Escape.
TEST(GimpBridge, OneUndoTheFilterWindowOverGimpAndGimpsColourSelector) {
    const std::string filterLog = ScratchDir("gimp_window_filter_log") + "/selectors.log";
    GimpOptions options;
    options.env = {"TESTFILTER_LOG=" + filterLog, "TESTFILTER_COLOR=1"};
    options.shortcuts =
        "(gtk_accel_path \"<Actions>/plug-in/plug-in-flyword-plumet\" \"<Primary><Shift>u\")\n"
        "(gtk_accel_path \"<Actions>/plug-in/plug-in-test-invert\" \"<Primary><Shift>i\")\n";
    options.driver = R"sh(
wait_for() { for i in $(seq 600); do [ -e "$1" ] && return 0; sleep 0.1; done; return 1; }
window() { for i in $(seq 600); do w=$(xdotool search --onlyvisible --name "$1" | head -1)
           [ -n "$w" ] && { echo $w; return 0; }; sleep 0.1; done; return 1; }
gone() { for i in $(seq 300); do [ -z "$(xdotool search --onlyvisible --name "$1")" ] && return 0
         sleep 0.1; done; return 1; }
press() { xdotool windowfocus --sync $1; sleep 0.3; xdotool key --clearmodifiers $2; }
wait_for @OUT@/filtered.png
image=$(window Untitled)
press $image ctrl+z; sleep 0.5
touch @OUT@/undone.flag
wait_for @OUT@/shown.png
press $image ctrl+shift+u
if filter=$(window 'FlyWORD Plumet$'); then
    echo "image $(printf 0x%x $image)"
    for i in $(seq 50); do xprop -id $filter WM_TRANSIENT_FOR | grep -q "window id" && break
                           sleep 0.1; done
    xprop -id $filter WM_TRANSIENT_FOR
    # Escape, and Yes to the question whether to quit.
    sleep 0.5; press $filter Escape
    alert=$(window '^FlyWORD Alert$') && press $alert Return
    gone 'FlyWORD Plumet$' && echo "filter window closed"
fi
for key in Return Escape; do
    press $image ctrl+shift+i
    if colour=$(window '^Select color$'); then
        sleep 0.5; press $colour $key
        gone '^Select color$' && echo "colour window closed on $key"
    fi
done
sleep 1
touch @OUT@/closed.flag
)sh";
    const GimpBatch batch = RunGimpScript("windows", {PLUMET_FILTER_MODULE, TestFilterPath()},
                                          std::string(kPrelude) + R"(
(define (wait-for file)
  (let loop ((i 0))
    (if (and (< i 10000000) (= 0 (car (file-glob file 0))))
        (loop (+ i 1)))))
(let* ((il (flat-image 64 48 '(255 255 255))) (image (car il)) (layer (cadr il))
       (display (car (gimp-display-new image))))
  (gimp-image-select-ellipse image CHANNEL-OP-REPLACE 8 8 48 32)
  (plug-in-test-invert RUN-NONINTERACTIVE image layer)
  (save image layer "filtered.png")
  (wait-for "@OUT@/undone.flag")
  (save image layer "undone.png")
  (gimp-display-delete display))
(let* ((il (flat-image 320 200 '(255 255 255))) (image (car il)) (layer (cadr il)))
  (gimp-display-new image)
  (save image layer "shown.png")
  (wait-for "@OUT@/closed.flag"))
)",
                                          options);
    if (!GimpRan(batch)) return;
    const std::string driver = ReadText(batch.dir + "/out/driver.log");

    const HostImage filtered = ReadPicture(batch, "filtered.png");
    const HostImage undone = ReadPicture(batch, "undone.png");
    ASSERT_EQ(undone.width, 64);
    EXPECT_TRUE(Same(filtered.Pixel(24, 32), {0, 0, 0})) << "the filter did not run";
    int changed = 0;
    for (std::size_t i = 0; i < undone.pixels.size(); ++i)
        changed += undone.pixels[i] != 255;
    EXPECT_EQ(changed, 0) << "one undo did not bring the layer back";

    // The filter's window is a transient of the image window.
    const auto image = driver.find("image 0x");
    ASSERT_NE(image, std::string::npos) << "the filter's window did not open:\n" << driver;
    const std::string imageId = driver.substr(image + 6, driver.find('\n', image) - image - 6);
    EXPECT_NE(driver.find("WM_TRANSIENT_FOR(WINDOW): window id # " + imageId), std::string::npos)
        << driver;
    EXPECT_NE(driver.find("filter window closed"), std::string::npos) << driver;

    EXPECT_NE(driver.find("colour window closed on Return"), std::string::npos) << driver;
    EXPECT_NE(driver.find("colour window closed on Escape"), std::string::npos) << driver;
    const std::string log = ReadText(filterLog);
    EXPECT_NE(log.find("color result=0 rgb=10,200,30"), std::string::npos) << log;
    EXPECT_NE(log.find("color result=-128 rgb=10,200,30"), std::string::npos) << log;
}
