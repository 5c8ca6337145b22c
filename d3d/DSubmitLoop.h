// The passes over a view, held in one place: open, submit, close, and
// submit again for as long as the renderer asks for another traversal.
#pragma once

#include "d3d/DExtViewer.h"
#include "d3d/DObject.h"

class DDisplayGroup;
class DGeometryObject;

class DSubmitLoop {
  public:
    virtual ~DSubmitLoop() = default;
    virtual void SetExtViewer(DExtViewer* viewer) { extViewer = viewer; }
    virtual void SubmitAdorners();
    // Opens a rendering pass.
    virtual void StartPass();
    // Closes it; answers the view status, kQ3ViewStatusRetraverse for
    // another traversal.
    virtual TQ3ViewStatus EndPass();
    // The viewer's styles, then its geometry.
    virtual void SubmitObjects();

    // How the last pass ended: done, or cancelled when the renderer was
    // asked to stop.
    TQ3ViewStatus GetStatus() const { return status; }

    DExtViewer* extViewer = nullptr;

  protected:
    // BeginFrame, the pass with as many traversals as it takes, EndFrame.
    // A throw on the way closes the pass and the frame and goes on.
    void RunPass();
    TQ3ViewObject View() const;

  private:
    TQ3ViewStatus status = kQ3ViewStatusDone;
};

// One drawing pass.
class DSubmitDraw : public DSubmitLoop {
  public:
    void Run(DExtViewer* viewer);
};

// The bounding box of a group or a geometry, in world coordinates.
class DBoundingBoxCalc : public DSubmitLoop {
  public:
    DBoundingBoxCalc(TQ3BoundingBox* result, TQ3ComputeBounds precision);
    void Run(const DDisplayGroup& group, DExtViewer* viewer);
    void Run(const DGeometryObject& geometry, DExtViewer* viewer);

    void SubmitAdorners() override {}
    void StartPass() override;
    TQ3ViewStatus EndPass() override;
    void SubmitObjects() override;

    TQ3BoundingBox* box;
    TQ3ComputeBounds precision;
    const DDisplayGroup* group = nullptr;
    const DGeometryObject* geometry = nullptr;
};

// The bounding sphere of a group, in world coordinates.
class DBoundingSphereCalc : public DSubmitLoop {
  public:
    DBoundingSphereCalc(TQ3BoundingSphere* result, TQ3ComputeBounds precision);
    void Run(const DDisplayGroup& group, DExtViewer* viewer);

    void SubmitAdorners() override {}
    void StartPass() override;
    TQ3ViewStatus EndPass() override;
    void SubmitObjects() override;

    TQ3BoundingSphere* sphere;
    TQ3ComputeBounds precision;
    const DDisplayGroup* group = nullptr;
};
