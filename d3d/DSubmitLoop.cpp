#include "d3d/DSubmitLoop.h"

#include "d3d/DGeometryObject.h"
#include "d3d/DGroupObject.h"
#include "d3d/DViewerObject.h"

TQ3ViewObject DSubmitLoop::View() const {
    if (!extViewer) CheckObject(nullptr);
    return extViewer->GetViewer().GetObject();
}

void DSubmitLoop::SubmitAdorners() {
    extViewer->SubmitAdorners();
}

void DSubmitLoop::StartPass() {
    CheckStatus(Q3View_StartRendering(View()));
}

TQ3ViewStatus DSubmitLoop::EndPass() {
    return Q3View_EndRendering(View());
}

void DSubmitLoop::SubmitObjects() {
    extViewer->SubmitStyles();
    extViewer->SubmitGeometry();
}

void DSubmitLoop::RunPass() {
    if (!extViewer) CheckObject(nullptr);
    extViewer->BeginFrame();
    status = kQ3ViewStatusDone;
    try {
        StartPass();
        do {
            SubmitAdorners();
            SubmitObjects();
            status = EndPass();
        } while (status == kQ3ViewStatusRetraverse);
    } catch (...) {
        // Close what was opened. A renderer that still wants another
        // traversal is cancelled, so the view is free for the next pass.
        if (EndPass() == kQ3ViewStatusRetraverse) Q3View_Cancel(View());
        status = kQ3ViewStatusError;
        Q3Error_Get(nullptr);
        extViewer->EndFrame();
        throw;
    }
    extViewer->EndFrame();
}

void DSubmitDraw::Run(DExtViewer* viewer) {
    SetExtViewer(viewer);
    RunPass();
}

DBoundingBoxCalc::DBoundingBoxCalc(TQ3BoundingBox* result, TQ3ComputeBounds how)
    : box(result), precision(how) {}

void DBoundingBoxCalc::Run(const DDisplayGroup& g, DExtViewer* viewer) {
    group = &g;
    geometry = nullptr;
    SetExtViewer(viewer);
    RunPass();
}

void DBoundingBoxCalc::Run(const DGeometryObject& g, DExtViewer* viewer) {
    group = nullptr;
    geometry = &g;
    SetExtViewer(viewer);
    RunPass();
}

void DBoundingBoxCalc::StartPass() {
    if (!box) CheckObject(nullptr);
    CheckStatus(Q3View_StartBoundingBox(View(), precision));
}

TQ3ViewStatus DBoundingBoxCalc::EndPass() {
    TQ3BoundingBox scratch;
    return Q3View_EndBoundingBox(View(), box ? box : &scratch);
}

void DBoundingBoxCalc::SubmitObjects() {
    if (group)
        group->Submit(extViewer->GetViewer());
    else if (geometry)
        CheckStatus(Q3Geometry_Submit(geometry->GetObject(), View()));
}

DBoundingSphereCalc::DBoundingSphereCalc(TQ3BoundingSphere* result, TQ3ComputeBounds how)
    : sphere(result), precision(how) {}

void DBoundingSphereCalc::Run(const DDisplayGroup& g, DExtViewer* viewer) {
    group = &g;
    SetExtViewer(viewer);
    RunPass();
}

void DBoundingSphereCalc::StartPass() {
    if (!sphere) CheckObject(nullptr);
    CheckStatus(Q3View_StartBoundingSphere(View(), precision));
}

TQ3ViewStatus DBoundingSphereCalc::EndPass() {
    TQ3BoundingSphere scratch;
    return Q3View_EndBoundingSphere(View(), sphere ? sphere : &scratch);
}

void DBoundingSphereCalc::SubmitObjects() {
    if (group) group->Submit(extViewer->GetViewer());
}
