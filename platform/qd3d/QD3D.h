/* The 3D library: retained objects, groups, attribute sets, passes over
 * views, picking and renderers. Everything is here. */
#ifndef QD3D_H
#define QD3D_H

#include "platform/qd3d/QD3DCamera.h"
#include "platform/qd3d/QD3DDrawContext.h"
#include "platform/qd3d/QD3DErrors.h"
#include "platform/qd3d/QD3DGeometry.h"
#include "platform/qd3d/QD3DGroup.h"
#include "platform/qd3d/QD3DLight.h"
#include "platform/qd3d/QD3DMath.h"
#include "platform/qd3d/QD3DObjects.h"
#include "platform/qd3d/QD3DPick.h"
#include "platform/qd3d/QD3DRenderer.h"
#include "platform/qd3d/QD3DShader.h"
#include "platform/qd3d/QD3DStyle.h"
#include "platform/qd3d/QD3DTransform.h"
#include "platform/qd3d/QD3DTypes.h"
#include "platform/qd3d/QD3DView.h"

#endif
