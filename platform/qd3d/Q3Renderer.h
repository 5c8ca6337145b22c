// Renderer objects: an instance of a renderer class with its methods.
#pragma once

#include "platform/qd3d/Q3Internal.h"

namespace q3 {

class RendererObject : public OpaqueTQ3Object {
  public:
    RendererObject(TQ3ObjectType type, const TQ3XRendererMethods& methods);
    ~RendererObject() override;
    TQ3XRendererMethods methods;
    void* instance = nullptr;
    TQ3Boolean doubleBufferBypass = kQ3False;
    TQ3RaveVendorID vendor = -1;
    TQ3RaveEngineID engine = 0;
};

// The interactive renderer's methods (Q3InteractiveRenderer.cpp).
const TQ3XRendererMethods& interactiveRendererMethods();

} // namespace q3
