// Style wrappers: each holds one value that acts on what follows it.
#pragma once

#include "d3d/DObject.h"

class DViewerObject;

class DStyleObject : public DShapeObject {
  public:
    ~DStyleObject() override;
    TQ3Object GetObject() const override { return object; }
    void Submit(const DViewerObject& viewer) const;
    void SubmitTo(TQ3ViewObject view) const;

    TQ3StyleObject object = nullptr;

  protected:
    DStyleObject() = default;
};

class DHighlightStyle : public DStyleObject {
  public:
    explicit DHighlightStyle(TQ3AttributeSet highlight);
    void Set(TQ3AttributeSet highlight);
    // A new reference to the set, which the caller disposes of.
    TQ3AttributeSet Get() const;
};

class DSubdivisionStyle : public DStyleObject {
  public:
    DSubdivisionStyle();
    void SetData(const TQ3SubdivisionStyleData& data);
    TQ3SubdivisionStyleData GetData() const;
};

class DReceiveShadowsStyle : public DStyleObject {
  public:
    DReceiveShadowsStyle();
    void Set(bool receives);
    bool Get() const;
};

class DInterpolationStyle : public DStyleObject {
  public:
    DInterpolationStyle();
    void Set(TQ3InterpolationStyle value);
    TQ3InterpolationStyle Get() const;
};

class DBackfacingStyle : public DStyleObject {
  public:
    DBackfacingStyle();
    void Set(TQ3BackfacingStyle value);
    TQ3BackfacingStyle Get() const;
};

class DFillStyle : public DStyleObject {
  public:
    DFillStyle();
    void Set(TQ3FillStyle value);
    TQ3FillStyle Get() const;
};

class DOrientationStyle : public DStyleObject {
  public:
    DOrientationStyle();
    void Set(TQ3OrientationStyle value);
    TQ3OrientationStyle Get() const;
};

// Gives what follows it a pick id, which a pick hit reports.
class DPickIDStyle : public DStyleObject {
  public:
    explicit DPickIDStyle(std::uint32_t id);
};
