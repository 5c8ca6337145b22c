#include "d3d/DShaderObject.h"

#include "d3d/DViewerObject.h"

DShaderObject::~DShaderObject() {
    if (object) Q3Object_Dispose(object);
}

void DShaderObject::Submit(const DViewerObject& viewer) const {
    SubmitTo(viewer.GetObject());
}

void DShaderObject::SubmitTo(TQ3ViewObject view) const {
    CheckStatus(Q3Shader_Submit(object, view));
}

DLambertIllumination::DLambertIllumination() {
    object = Q3LambertIllumination_New();
    CheckObject(object);
}

DNullIllumination::DNullIllumination() {
    object = Q3NULLIllumination_New();
    CheckObject(object);
}

DPhongIllumination::DPhongIllumination() {
    object = Q3PhongIllumination_New();
    CheckObject(object);
}
