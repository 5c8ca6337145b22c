// Template widgets of each kind, made on first demand and kept until the
// module goes.
#pragma once

#include "d3d/DWidget.h"
#include "d3d/Singleton.h"

#include <memory>

class DWidgetFactory : public Singleton<DWidgetFactory> {
  public:
    DWidgetFactory();
    ~DWidgetFactory();

    // Kind 1 scale, 2 rotate, 3 orbit, 4 centroid, 5 camera, 6 light; null
    // for any other kind.
    DWidget* Get(int kind);
    // Deletes the templates, while the 3D library still runs.
    void Clear();

  private:
    std::unique_ptr<DWidget> widgets[7];
};

// The one factory of the module.
DWidgetFactory& TheWidgetFactory();
