// The renderers the 3D library offers: the interactive one that draws every
// frame, and the final ones the user picks from.
#pragma once

#include "d3d/DObject.h"
#include "foundation/KList.h"

#include <cstdint>
#include <string>
#include <vector>

// One renderer of the library, with its type and the name it is shown by.
class DRendererObject : public DSharable {
  public:
    static constexpr std::size_t kNameSize = 1024;

    // Makes the renderer; throws Plin when the library cannot.
    explicit DRendererObject(TQ3ObjectType type);
    ~DRendererObject() override;
    TQ3Object GetObject() const override { return object; }

    bool ModalConfigure(TQ3DialogAnchor anchor, bool* ok);
    bool IsInteractive() const;
    bool HasModalConfigure() const;
    TQ3ObjectType GetType() const { return type; }
    void SetType(TQ3ObjectType t) { type = t; }
    const char* GetNickName() const { return nickName; }
    // Keeps at most kNameSize - 1 bytes.
    void SetNickName(const char* text);

    TQ3RendererObject object = nullptr;
    TQ3ObjectType type = 0;
    char nickName[kNameSize] = {};
};

// Every renderer class the library has registered, made once.
struct RendererTable {
    RendererTable() = default;
    ~RendererTable();
    RendererTable(const RendererTable&) = delete;
    RendererTable& operator=(const RendererTable&) = delete;

    // Makes one renderer of each class; true if at least one was made.
    // Throws trsa when the library has no renderer class at all.
    bool Build();
    DRendererObject* Find(TQ3ObjectType type) const;
    bool IsInteractive(TQ3ObjectType type) const;
    bool HasConfigure(TQ3ObjectType type) const;
    bool NameOfType(TQ3ObjectType type, std::string* name) const;
    bool TypeOfName(const char* name, TQ3ObjectType* type) const;

    // The classes in the order the library lists them; null where a class
    // could not be made.
    std::vector<DRendererObject*> renderers;
};

class VZarbesoView;

// The view's renderers: the interactive preview and the chosen final one.
class QRenderer {
  public:
    explicit QRenderer(VZarbesoView* view);
    virtual ~QRenderer();

    // The names of the final renderers for the Renderer combo, last class
    // first, without the generic renderer.
    std::vector<std::string> FillRendererNames() const;
    void SelectFinalRenderer(const char* name);
    TQ3ObjectType GetFinalType() const { return finalType; }
    // The viewer draws with the interactive renderer, and the models fill.
    void UseInteractivePreview();
    bool FinalHasConfigure() const;
    void ConfigureFinal(TQ3DialogAnchor anchor);
    // Draws the picture with the final renderer and shows it; the viewer has
    // the preview renderer again afterwards. False when the render was
    // stopped.
    bool Render(bool interactive);

    VZarbesoView* view;
    RendererTable table;
    TQ3ObjectType finalType = 0;
    TQ3ObjectType previewType = 0;
};

// The name under which the final renderer of this product is registered.
inline constexpr const char* kFinalRendererNickName = "LightWorks SuperLite for FlyWORD";
