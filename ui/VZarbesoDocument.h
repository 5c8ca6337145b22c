// The document of one run of the filter: the view with its scene and text,
// the renderers, the workspace that the preferences file keeps between runs,
// and the state of the main window's controls that the workspace reads and
// writes. The window builds on it and shows that state; the run without a
// window uses the document alone.
#pragma once

#include "foundation/KList.h"
#include "foundation/WListener.h"
#include "render/Renderers.h"
#include "scene/VZarbesoView.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class VZarbesoWorkspace;

// A texture file the user has loaded: an entry of the document's list.
class VTextureFileName : public KListEntry {
  public:
    char path[256] = {};
};

// Fixed rows of the combo boxes whose choice the workspace keeps.
enum : std::int32_t {
    kViewRowCustom = 6,      // View: "Custom View" when closed, hyphens when open
    kFirstCustomViewRow = 7, // View: the custom views, then hyphens, then "Set View..."
    kMaxCustomViews = 4,
    kPathRowLine = 0,           // Path: rows 0 to 7 are the analytic paths
    kPathRowSeparator = 8,      // Path: hyphens
    kFirstCustomPathRow = 9,    // Path: the custom paths, hyphens, "New Path...", "Delete Path..."
    kSurfaceRowColor = 0,       // Surface: "Color", hyphens, the four textures, hyphens
    kFirstTextureRow = 2,       // Surface: "Clouds"; "Sunflower" is 5
    kFirstCustomTextureRow = 7, // Surface: the custom textures, hyphens, "New Texture..."
};

// What the combo boxes, the Link box and the text field of the main window
// hold, kept by the document under each control's meaning. The window shows
// these values, hands the user's changes to the document's operations
// below, and shows them again in UpdateControls. Numeric fields and colour
// buttons show the model itself: the view's getters and the light manager.
struct VControlValues {
    std::int32_t viewRow = 0;      // View (1026)
    std::int32_t fontRow = 0;      // Font (1043): position in the font list - 1
    std::int32_t pathRow = 0;      // Path (1051)
    std::int32_t surfaceRow = 0;   // Surface (1082)
    std::int32_t rendererRow = -1; // Final Render (1097); -1 without renderers
    std::uint8_t link = 0;         // Link (1087)
    std::string text;              // Text (1041), at most maxTextLength bytes
};

// The five check boxes under the view (1028, 1030, 1027, 1029, 1031).
enum class VSwitch { kImage, kText, kPath, kLights, kGrid };

// The kinds of rows of the Path combo.
enum class VPathRowKind { kAnalytic, kSeparator, kCustom, kNewPath, kDeletePath };

class VZarbesoDocument : public KListener {
  public:
    // Makes the view, the renderers and the workspace; with loadWorkspace
    // the workspace is read from the preferences file, else it holds the
    // defaults.
    explicit VZarbesoDocument(bool loadWorkspace);
    ~VZarbesoDocument() override;

    // ---- the run ----
    // The rows that follow from the lists: the current font and the final
    // renderer of this product.
    void InitControls();
    // Binds the view to the host's buffers: the preview size at start-up,
    // the full size for the final render.
    void BindImage(bool final);
    // The final render on OK and in the run without a window: fetches the
    // full-size buffers, renders and composites into the host's output.
    // False when the host could not deliver them or the render was stopped
    // (RenderStopped tells which); the output is then as it was.
    bool RenderFinal();
    // Hides what is not part of the picture, renders with the final
    // renderer, and shows it all again. False when the render was stopped;
    // a stopped Preview shows the scene as it was again.
    bool RenderScene(bool interactive);
    // Whether the last render was stopped before it was done.
    bool RenderStopped() const { return renderStopped_; }
    // What OK does once the text is there: saves the workspace, renders at
    // full size, and ends the document's part of the run (invocation 0).
    bool ConfirmRun();
    // Preview: unless a render already stands in the view, renders the scene
    // over the image, whatever the Image box says, and leaves it showing
    // until the scene changes.
    void PreviewRender();
    // The Delete key: the point tools delete their selected anchor first;
    // otherwise the selected light goes, or with `all` every light. False
    // when nothing was deleted.
    bool DeleteSelection(bool all);

    // ---- the workspace ----
    // Fills a new workspace from the scene and the controls and writes it.
    void SaveWorkspace();
    // Takes the workspace into the scene and the controls.
    void ApplyWorkspace();
    // The workspace's defaults in the scene and controls; writes nothing.
    void ResetAll();
    // Defaults into the workspace and the scene: the first run's state.
    void ApplyDefaults();
    VZarbesoWorkspace* GetWorkspace() const { return workspace_.get(); }

    // ---- the View combo and custom views ----
    // A standard view (rows 0 to 5) or a custom one; another row goes back
    // to selectedView. The last row is the window's naming flow below.
    void SelectViewRow(std::int32_t row);
    std::vector<std::string> GetViewRows() const;
    // "Custom View  n" with the first n that no row has.
    std::string ProposeCustomViewName() const;
    // The row of that name, compared without regard to case, or -1.
    std::int32_t FindViewRow(const std::string& name) const;
    // Keeps the camera under a new name; the fifth drops the earliest.
    void AddCustomView(const std::string& name);
    // Keeps the camera in the custom view of that row.
    void ReplaceCustomView(std::int32_t row);
    std::int32_t GetCustomViewCount() const { return std::int32_t(customViewNames.size()); }

    // ---- fonts and renderers ----
    void SelectFontRow(std::int32_t row);
    void SelectRendererRow(std::int32_t row);
    std::vector<std::string> GetRendererRows() const;

    // ---- the Path combo and its fields ----
    VPathRowKind GetPathRowKind(std::int32_t row) const;
    std::vector<std::string> GetPathRows() const;
    // The combo's flow for an analytic, custom or separator row; the last
    // two rows are the window's New Path and Delete Path flows.
    void SelectPathRow(std::int32_t row);
    // One of the two values (which 1 or 2) of the current analytic path,
    // 0 to 100 as the field shows it.
    void SetPathValue(std::int32_t which, float value, bool redraw);
    // The name the naming dialog proposes: "Custom Path n".
    std::string ProposeCustomPathName() const;
    // The row of that name, compared without regard to case, or -1.
    std::int32_t FindPathRow(const std::string& name) const;
    // New Path once named: a new record for the path about to be drawn.
    bool NewCustomPath(const std::string& name);
    // Convert once named: the analytic path becomes a new custom path.
    bool ConvertPath(const std::string& name);
    // Takes out the custom paths of these rows, as Delete Path and a
    // replacing name do, and selects what stays.
    void DeleteCustomPathRows(std::vector<std::int32_t> rows);

    // ---- the Surface combo ----
    std::vector<std::string> GetSurfaceRows() const;
    void SelectSurfaceRow(std::int32_t row);
    // New Texture once a file is chosen: loads it and adds its row. False,
    // after the alert, when it does not load.
    bool AddCustomTexture(const std::string& path);

    // ---- colours, Link, fields, text, switches, options ----
    void SetFaceColor(const std::array<std::uint16_t, 3>& color);
    void SetSideColor(const std::array<std::uint16_t, 3>& color);
    void SetLink(bool on);
    void SetAmbientColor(const std::array<std::uint16_t, 3>& color);
    // Intensity and Transparency in percent; a value outside 0 to 100 is
    // refused.
    bool SetIntensity(std::int32_t percent);
    bool SetTransparency(std::int32_t percent);
    // The text field; cut at maxTextLength.
    void SetText(const std::string& text);
    void SetSwitch(VSwitch which, bool on);
    bool GetSwitch(VSwitch which) const;
    // The Options dialog's icon size (2, 3 or 4).
    void SetLightIconSize(float size);

    // ---- the window's part ----
    // Draws the view again; nothing while suspendRedraw is set or without a
    // window.
    virtual void Redraw() {}
    // Ends a render that is showing, and redraws if asked.
    virtual void ClearRender(bool redrawToo);
    // The document changed control values: the window shows them again.
    virtual void UpdateControls() {}
    // Alert 17007 with the file name and 17008.
    virtual void ReportTextureFailure(const std::string& path);
    // Camera changes move the View combo to "Custom View".
    void HearMessage(std::int32_t message, void* parameter) override;

    VZarbesoView* GetView() const { return view_.get(); }
    QRenderer* GetRenderer() const { return renderer_.get(); }

    // The fields of a run, under their meaning.
    VControlValues controls;
    std::uint8_t suspendRedraw = 0;
    std::int32_t maxTextLength = 126;
    float lightIconSize = 3.0f;
    std::uint8_t showTooltips = 1;
    std::int32_t currentTool = 12;
    std::int32_t pathValues[9][2] = {};   // per path number 1 to 8, the two values
    std::int32_t textDefaults[8][2] = {}; // ids 1109 to 1116 and their values
    std::int32_t selectedView = 0;
    std::int32_t selectedSurface = 0;
    std::int32_t selectedPath = 0;
    std::int32_t currentCustomPath = 0; // from 1; 0: none
    std::uint8_t drawingPath = 0;
    std::array<std::uint16_t, 3> sideColor = {0, 0, 0x8888};
    std::vector<std::string> customViewNames;
    std::int32_t nextCustomViewNumber = 1;
    std::uint8_t keepViewSelection = 0;
    KList customTextures; // of VTextureFileName

  protected:
    // Gives the view a new size: the part of the window's layout that
    // follows the image.
    virtual void AdjustViewSize(int width, int height, bool scaled);
    // Told now and then during a render how much of it is done, 0 to 1;
    // answers false to stop it. Here the host's progressProc hears it and
    // its abortProc may stop it; a window adds its own display and key.
    virtual bool RenderProgress(double done);

  private:
    // What the window's buffers were asked for before a final render.
    struct PreviewRequest {
        Rect inRect, outRect;
        Fixed inputRate, maskRate;
        int16 inLoPlane, inHiPlane, outLoPlane, outHiPlane;
        int16 planes, alphaPlane;
    };
    bool renderStopped_ = false;
    void SaveCamera(VZarbesoWorkspace& w) const;
    void ApplyCamera(const VZarbesoWorkspace& w);
    void SaveLights(VZarbesoWorkspace& w) const;
    void ApplyLights(const VZarbesoWorkspace& w);
    void ApplyLayout(const float* values);
    void StoreCurrentCustomPath();
    void TakeTextDefaults();
    std::int32_t GetPathRowCount() const;
    std::int32_t GetSurfaceRowCount() const;

    std::unique_ptr<VZarbesoView> view_;
    std::unique_ptr<QRenderer> renderer_;
    std::unique_ptr<VZarbesoWorkspace> workspace_;
};
