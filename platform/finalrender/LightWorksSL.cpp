// The renderer class: collects the triangles and lights of a pass, and at
// the end of the pass builds the ray tracing structure and traces the
// picture into the draw context's pixmap.
#include "platform/finalrender/LightWorksSL.h"

#include "platform/finalrender/LWRayTap.h"
#include "platform/finalrender/LWScene.h"
#include "platform/finalrender/LWTracer.h"
#include "platform/qd3d/Q3Internal.h"

#include <oneapi/tbb/global_control.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <new>
#include <optional>
#include <string>
#include <vector>

namespace lwsl {
namespace {

TQ3ObjectType gRendererType = 0;

// Embree builds with the thread pool of TBB, whose workers would stay after
// the call; ending the pool when the picture is done takes them down with
// it. Should another part of the process use TBB, the pool stays as it is.
//
// The pool is held to one thread from before the device is made until after
// it has ended. The device holds it to one thread too, but lets go when it
// is released, and TBB then starts a worker at once, with nothing to do,
// just before the pool ends: a thread that would only be ending as the
// caller goes on (or as the process exits).
class ThreadPoolEnd {
  public:
    ThreadPoolEnd() {
        try {
            handle = oneapi::tbb::task_scheduler_handle(oneapi::tbb::attach{});
            oneThread.emplace(oneapi::tbb::global_control::max_allowed_parallelism, 1);
        } catch (...) {
        }
    }
    ~ThreadPoolEnd() {
        if (handle) oneapi::tbb::finalize(handle, std::nothrow);
        oneThread.reset(); // after the end: no pool is left to grow
    }
    ThreadPoolEnd(const ThreadPoolEnd&) = delete;
    ThreadPoolEnd& operator=(const ThreadPoolEnd&) = delete;

  private:
    oneapi::tbb::task_scheduler_handle handle;
    std::optional<oneapi::tbb::global_control> oneThread;
};

class Renderer {
  public:
    TQ3Status startPass(const TQ3XPassInfo& info) {
        scene.clear();
        pass = info;
        lights.assign(info.lights, info.lights + info.numLights);
        pass.lights = nullptr;
        return kQ3Success;
    }

    TQ3ViewStatus endPass(TQ3ViewObject view) {
        ThreadPoolEnd poolEnd;
        TQ3ViewStatus status = kQ3ViewStatusError;
        try {
            status = renderPicture(view);
        } catch (...) {
            q3::postError(kQ3ErrorOutOfMemory);
        }
        scene.clear(); // the ray tracing structure goes before poolEnd ends
        return status;
    }

    TQ3ViewStatus renderPicture(TQ3ViewObject view) {
        using Clock = std::chrono::steady_clock;
        figures = {};
        auto t0 = Clock::now();
        std::string why;
        if (!scene.build(why)) {
            q3::postError(kQ3ErrorOutOfMemory);
            return kQ3ViewStatusError;
        }
        auto t1 = Clock::now();
        TraceFigures traced;
        const TraceProgress progress = [view](std::uint64_t done, std::uint64_t total) {
            // in units the method's 32 bits can hold
            const std::uint64_t unit = total / 0xFFFFFFFFu + 1;
            return Q3XView_IdleProgress(view, static_cast<TQ3Uns32>(done / unit),
                                        static_cast<TQ3Uns32>(total / unit)) == kQ3Success;
        };
        const TraceResult result = pass.pixmap.image == nullptr
                                       ? TraceResult::Done
                                       : trace(scene, pass, lights, options, traced, progress, tap);
        auto t2 = Clock::now();
        figures.primaryRays = static_cast<double>(traced.primaryRays);
        figures.shadowRays = static_cast<double>(traced.shadowRays);
        figures.tracedPixels = static_cast<double>(traced.tracedPixels);
        figures.refinedPixels = static_cast<double>(traced.refinedPixels);
        figures.triangles = static_cast<double>(scene.triangleCount());
        figures.buildSeconds = std::chrono::duration<double>(t1 - t0).count();
        figures.renderSeconds = std::chrono::duration<double>(t2 - t1).count();
        figures.threads = traced.threads;
        if (result == TraceResult::NoTarget) {
            q3::postError(kQ3ErrorUnsupportedPixelType);
            return kQ3ViewStatusError;
        }
        return result == TraceResult::Stopped ? kQ3ViewStatusCancelled : kQ3ViewStatusDone;
    }

    Scene scene;
    TQ3XPassInfo pass{};
    std::vector<TQ3XLight> lights;
    TraceOptions options;
    TQ3LightWorksSLStatistics figures{};
    RayTap* tap = nullptr;
};

Renderer* self(void* p) {
    return static_cast<Renderer*>(p);
}

TQ3LightWorksSLSettingsDialog gSettingsDialog = nullptr;

TQ3Status configure(void* p, TQ3DialogAnchor anchor, TQ3Boolean* canceled) {
    *canceled = kQ3True;
    if (!gSettingsDialog) {
        q3::postError(kQ3ErrorUnsupportedFunctionality);
        return kQ3Failure;
    }
    TraceOptions& o = self(p)->options;
    TQ3LightWorksSLSettings s{o.samplesPerSide, o.adaptive ? kQ3True : kQ3False,
                              o.shadows ? kQ3True : kQ3False};
    if (gSettingsDialog(anchor, &s) == kQ3False) return kQ3Success;
    o.samplesPerSide = std::clamp<TQ3Uns32>(s.samplesPerSide, 1, 8);
    o.adaptive = s.adaptive != kQ3False;
    o.shadows = s.shadows != kQ3False;
    *canceled = kQ3False;
    return kQ3Success;
}

TQ3XRendererMethods makeMethods() {
    TQ3XRendererMethods m{};
    m.newInstance = []() -> void* { return new (std::nothrow) Renderer; };
    m.deleteInstance = [](void* p) { delete self(p); };
    m.isInteractive = kQ3False;
    m.startPass = [](void* p, TQ3ViewObject, const TQ3XPassInfo* info) {
        if (!info) return kQ3Failure;
        try {
            return self(p)->startPass(*info);
        } catch (...) {
            q3::postError(kQ3ErrorOutOfMemory);
            return kQ3Failure;
        }
    };
    m.submitTriangles = [](void* p, const TQ3XTriangleBatch* batch) {
        if (!batch) return kQ3Failure;
        try {
            self(p)->scene.add(*batch);
            return kQ3Success;
        } catch (...) {
            self(p)->scene.clear();
            q3::postError(kQ3ErrorOutOfMemory);
            return kQ3Failure;
        }
    };
    // Lines, points and markers are guides of the editor, not part of a
    // finished picture: the ray tracer leaves them out.
    m.endPass = [](void* p, TQ3ViewObject view) { return self(p)->endPass(view); };
    m.cancelPass = [](void* p) { self(p)->scene.clear(); };
    m.modalConfigure = configure;
    return m;
}

// The instance behind a renderer of this class, or null after posting why.
Renderer* instanceOf(TQ3RendererObject renderer) {
    if (!renderer) {
        q3::postError(kQ3ErrorNULLParameter);
        return nullptr;
    }
    if (gRendererType == 0 || Q3Renderer_GetType(renderer) != gRendererType) {
        q3::postError(kQ3ErrorInvalidObjectType);
        return nullptr;
    }
    return self(Q3XRenderer_GetInstance(renderer));
}

// The switches of a renderer's options.
TQ3Status setFlag(TQ3RendererObject renderer, bool TraceOptions::*field, TQ3Boolean flag) {
    Renderer* r = instanceOf(renderer);
    if (!r) return kQ3Failure;
    r->options.*field = flag != kQ3False;
    return kQ3Success;
}

TQ3Status getFlag(TQ3RendererObject renderer, bool TraceOptions::*field, TQ3Boolean* flag) {
    Renderer* r = instanceOf(renderer);
    if (!r) return kQ3Failure;
    if (!flag) {
        q3::postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *flag = r->options.*field ? kQ3True : kQ3False;
    return kQ3Success;
}

bool registered() {
    TQ3ObjectClassNameString name;
    return gRendererType != 0 &&
           Q3RendererClass_GetNickNameString(gRendererType, name) == kQ3Success;
}

} // namespace
} // namespace lwsl

using namespace lwsl;

extern "C" {

void Q3LightWorks_SL_SetSettingsDialog(TQ3LightWorksSLSettingsDialog dialog) {
    gSettingsDialog = dialog;
}

TQ3Status Q3LightWorks_SL_Initialise(const char* className, const char* nickName,
                                     const char* menuName) {
    if (registered()) return kQ3Success;
    gRendererType = 0;
    if (!className || !*className) className = kQ3LightWorksSLClassName;
    if (!nickName || !*nickName)
        nickName = menuName && *menuName ? menuName : kQ3LightWorksSLNickName;
    static const TQ3XRendererMethods methods = makeMethods();
    TQ3ObjectType type = 0;
    if (!Q3XRendererClass_Register(0, className, nickName, &methods, &type)) return kQ3Failure;
    gRendererType = type;
    return kQ3Success;
}

TQ3ObjectType Q3LightWorks_SL_GetRendererType(void) {
    return registered() ? gRendererType : 0;
}

TQ3Status Q3LightWorks_SL_SetTransparencyAffectsAlpha(TQ3RendererObject renderer, TQ3Boolean flag) {
    return setFlag(renderer, &TraceOptions::transparencyAffectsAlpha, flag);
}

TQ3Status Q3LightWorks_SL_GetTransparencyAffectsAlpha(TQ3RendererObject renderer,
                                                      TQ3Boolean* flag) {
    return getFlag(renderer, &TraceOptions::transparencyAffectsAlpha, flag);
}

TQ3Status Q3LightWorks_SL_SetSamplesPerSide(TQ3RendererObject renderer, TQ3Uns32 samplesPerSide) {
    Renderer* r = instanceOf(renderer);
    if (!r) return kQ3Failure;
    if (samplesPerSide < 1 || samplesPerSide > 8) {
        q3::postError(kQ3ErrorParameterOutOfRange);
        return kQ3Failure;
    }
    r->options.samplesPerSide = samplesPerSide;
    return kQ3Success;
}

TQ3Status Q3LightWorks_SL_GetSamplesPerSide(TQ3RendererObject renderer, TQ3Uns32* samplesPerSide) {
    Renderer* r = instanceOf(renderer);
    if (!r) return kQ3Failure;
    if (!samplesPerSide) {
        q3::postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *samplesPerSide = r->options.samplesPerSide;
    return kQ3Success;
}

TQ3Status Q3LightWorks_SL_SetAdaptiveSamples(TQ3RendererObject renderer, TQ3Boolean flag) {
    return setFlag(renderer, &TraceOptions::adaptive, flag);
}

TQ3Status Q3LightWorks_SL_GetAdaptiveSamples(TQ3RendererObject renderer, TQ3Boolean* flag) {
    return getFlag(renderer, &TraceOptions::adaptive, flag);
}

TQ3Status Q3LightWorks_SL_SetShadows(TQ3RendererObject renderer, TQ3Boolean shadows) {
    return setFlag(renderer, &TraceOptions::shadows, shadows);
}

TQ3Status Q3LightWorks_SL_GetStatistics(TQ3RendererObject renderer,
                                        TQ3LightWorksSLStatistics* statistics) {
    Renderer* r = instanceOf(renderer);
    if (!r) return kQ3Failure;
    if (!statistics) {
        q3::postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *statistics = r->figures;
    return kQ3Success;
}

} // extern "C"

namespace lwsl {

bool SetRayTap(TQ3RendererObject renderer, RayTap* tap) {
    Renderer* r = instanceOf(renderer);
    if (!r) return false;
    r->tap = tap;
    return true;
}

} // namespace lwsl
