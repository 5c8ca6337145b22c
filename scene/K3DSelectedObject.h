// A selected object: it passes the object interface on to the object it
// wraps, so that tools treat a selection and an object alike, and it owns
// the widget that shows the selection and offers handles.
#pragma once

#include "d3d/DWidget.h"
#include "scene/K3DObject.h"

#include <cstdint>
#include <memory>

class VC3DObject;

// Widget kinds: none, a wire box with corner handles, three rings, and the
// bare wire box of an object that may only be moved.
enum WidgetKind : int { kNoWidget = 0, kScaleWidget = 1, kRotateWidget = 2, kTranslateWidget = 7 };

class K3DSelectedObject : public K3DObject {
  public:
    explicit K3DSelectedObject(K3DObject* object) : object(object) {}
    ~K3DSelectedObject() override;

    void Translate(const KVector3D& delta) override { object->Translate(delta); }
    void UpdateAfterMove() override { object->UpdateAfterMove(); }
    void GetRotationMatrix(TQ3Matrix4x4& out) const override { object->GetRotationMatrix(out); }
    void GetScaleMatrix(TQ3Matrix4x4& out) const override { object->GetScaleMatrix(out); }
    void GetLocalToWorld(TQ3Matrix4x4& out, int mode) const override {
        object->GetLocalToWorld(out, mode);
    }
    void GetBoundingBox(TQ3BoundingBox& out) const override { object->GetBoundingBox(out); }
    void SetScale(const KVector3D& scale) override { object->SetScale(scale); }
    void SetRotation(const KVector3D& angles) override { object->SetRotation(angles); }
    void MultiplyScale(const KVector3D& factors) override { object->MultiplyScale(factors); }
    void GetBoundingSphere(TQ3BoundingSphere& out) const override {
        object->GetBoundingSphere(out);
    }
    void GetCenter(KVector3D& out) const override { object->GetCenter(out); }
    void RotateAboutAxis(const KVector3D& axis, float angle) override {
        object->RotateAboutAxis(axis, angle);
    }
    void GetAxisScales(KVector3D& out) const override { object->GetAxisScales(out); }
    void GetPosition(KVector3D& out) const override { object->GetPosition(out); }
    void BeginEdit() override { object->BeginEdit(); }
    void EndEdit() override { object->EndEdit(); }
    bool SelectPart(bool toggle) override { return object->SelectPart(toggle); }
    bool EditAtPart() override { return object->EditAtPart(); }

    // Which part of the widget the last pick named (bits 28 to 30 of its
    // id); false when it named none. `part` may be null.
    virtual bool GetWidgetPart(std::int16_t* /*part*/) const { return false; }
    // Whether the last pick named a part of the selection's own (bit 31),
    // and the handle number (bits 24 to 27). `handle` may be null.
    virtual bool GetHandlePart(std::int16_t* /*handle*/) const { return false; }
    // Marks ring `part` of a rotate widget.
    virtual void HighlightPart(std::int16_t /*part*/, bool /*on*/) {}
    // Shows guide lines through a point of a scale widget.
    virtual void CueHandle(const KVector3D& /*point*/, bool /*on*/) {}
    // Lets the user edit the object (the colour of a light).
    virtual void Edit() {}
    // Fits the widget to the object's scale and to the camera's distance.
    virtual void UpdateWidget() {}
    virtual void DeleteWidget(K3DObject* /*object*/, DWidget* /*widget*/) {}
    virtual std::unique_ptr<DWidget> CreateScaleWidget(K3DObject* object);
    virtual std::unique_ptr<DWidget> CreateRotateWidget(K3DObject* object);
    virtual std::unique_ptr<DWidget> CreateTranslateWidget(K3DObject* object);
    virtual std::unique_ptr<DWidget> CreateOtherWidget(int kind, K3DObject* object);

    // Replaces a widget of another kind; kind 0 leaves none.
    void SetWidget(int kind);
    void ShowWidget(bool flag);
    DWidget* GetWidget() const { return widget.get(); }
    K3DObject* GetObject() const { return object; }

  protected:
    // Takes the widget out of the object and deletes it.
    void RemoveWidget();

    std::unique_ptr<DWidget> widget;
    K3DObject* object;
};

// The selected object of a scene: its id is the object's with bit 31 set,
// and its widget gives each of its parts an id made from that.
class VCSelectedObject : public K3DSelectedObject {
  public:
    VCSelectedObject(VC3DObject* object, std::uint32_t id);
    ~VCSelectedObject() override;

    bool GetWidgetPart(std::int16_t* part) const override;
    bool GetHandlePart(std::int16_t* handle) const override;
    void HighlightPart(std::int16_t part, bool on) override;
    void CueHandle(const KVector3D& point, bool on) override;
    void Edit() override;
    void UpdateWidget() override;
    void DeleteWidget(K3DObject* object, DWidget* widget) override;
    std::unique_ptr<DWidget> CreateScaleWidget(K3DObject* object) override;
    std::unique_ptr<DWidget> CreateRotateWidget(K3DObject* object) override;
    std::unique_ptr<DWidget> CreateTranslateWidget(K3DObject* object) override;

    // How large a widget must be to keep its size on the screen: 20 over
    // the distance from the eye to the object's centre.
    float SizeFactor() const;

    std::uint32_t id;
    std::uint32_t lastPickId;
};
