// The three camera transforms of a view: orbit, pan and scale, put in front
// of the scene as adorners. Every change broadcasts the combined matrix.
#pragma once

#include "foundation/WBroadcaster.h"
#include "scene/KAdorner.h"

class WAttachable;
class WView;

class K3DViewAdorner : public KBroadcaster {
  public:
    enum Index { kOrbit = 0, kPan = 1, kScale = 2 };
    enum Operation { kApply = 0, kReset = 1 };

    // Adds pan, orbit and scale, in that order, to the view's attachments.
    K3DViewAdorner(WAttachable& host, WView* view);
    ~K3DViewAdorner() override;

    void ApplyTo(int index, int operation, const void* value, bool redraw);
    // Resets all three and sets each that is given.
    void SetAll(const TQ3Matrix4x4* scale, const TQ3Matrix4x4* orbit, const TQ3Matrix4x4* pan);
    void ResetAll();
    void GetAll(TQ3Matrix4x4* scale, TQ3Matrix4x4* orbit, TQ3Matrix4x4* pan) const;
    // scale x orbit x pan.
    void GetTotal(TQ3Matrix4x4& out) const;
    // Recomputes the total and broadcasts it (message 20003).
    void UpdateTotal();

    KOrbitAdorner orbit;
    KPanAdorner pan;
    KScaleAdorner scale;
    WView* view;
    TQ3Matrix4x4 total;

  private:
    KAdorner* At(int index);
};
