/* The final renderer library: a ray tracer that registers itself as a
 * renderer class of the 3D library. Q3LightWorks_SL_Initialise registers the
 * class; the renderer is then made like any other, with
 * Q3Renderer_NewFromType or Q3View_SetRendererByType. */
#ifndef LIGHTWORKS_SL_H
#define LIGHTWORKS_SL_H

#include "platform/qd3d/QD3DRenderer.h"

#ifdef __cplusplus
extern "C" {
#endif

#define kQ3LightWorksSLClassName "LightWorkDesign:Renderer:SuperLite:Lumerra:FlyWORD"
#define kQ3LightWorksSLNickName "LightWorks SuperLite for FlyWORD"

/* Registers the renderer class under className with nickName as the name
 * shown in menus; menuName is taken when nickName is NULL or empty. NULL
 * className takes kQ3LightWorksSLClassName, and NULL names take
 * kQ3LightWorksSLNickName. A second call answers success and keeps the first
 * registration. The class's type is stored in *outType when it is not NULL. */
TQ3Status Q3LightWorks_SL_Initialise(const char* className, const char* nickName,
                                     const char* menuName);
/* The type of the registered class, or 0 before Q3LightWorks_SL_Initialise. */
TQ3ObjectType Q3LightWorks_SL_GetRendererType(void);

/* With the flag set, a see-through surface leaves a partial alpha in the
 * picture, so that what lies behind the picture shows through it; without it
 * alpha is coverage alone. Off in a new renderer. */
TQ3Status Q3LightWorks_SL_SetTransparencyAffectsAlpha(TQ3RendererObject renderer, TQ3Boolean flag);
TQ3Status Q3LightWorks_SL_GetTransparencyAffectsAlpha(TQ3RendererObject renderer, TQ3Boolean* flag);

/* Anti-aliasing: samplesPerSide by samplesPerSide jittered samples in each
 * pixel, 1 to 8; 1 samples the pixel's centre. 2 in a new renderer. */
TQ3Status Q3LightWorks_SL_SetSamplesPerSide(TQ3RendererObject renderer, TQ3Uns32 samplesPerSide);
TQ3Status Q3LightWorks_SL_GetSamplesPerSide(TQ3RendererObject renderer, TQ3Uns32* samplesPerSide);

/* With the flag set, a pixel whose samples disagree (an edge, the rim of a
 * shadow) gets twice as many a side: 4 become 16 by default. Flat areas keep
 * the first samples. On in a new renderer; it needs 2 samples a side or more. */
TQ3Status Q3LightWorks_SL_SetAdaptiveSamples(TQ3RendererObject renderer, TQ3Boolean flag);
TQ3Status Q3LightWorks_SL_GetAdaptiveSamples(TQ3RendererObject renderer, TQ3Boolean* flag);

/* Shadows from the lights that cast them: on in a new renderer. */
TQ3Status Q3LightWorks_SL_SetShadows(TQ3RendererObject renderer, TQ3Boolean shadows);

/* What a renderer's settings dialog shows and may change. */
typedef struct TQ3LightWorksSLSettings {
    TQ3Uns32 samplesPerSide; /* 1 to 8 */
    TQ3Boolean adaptive;
    TQ3Boolean shadows;
} TQ3LightWorksSLSettings;

/* The dialog behind Q3Renderer_ModalConfigure: it is given the renderer's
 * settings and the caller's window, and answers kQ3True when the user kept
 * what it now holds, kQ3False when the user cancelled. The library has no
 * window of its own: without a dialog, configuring fails as unsupported.
 * NULL removes it. */
typedef TQ3Boolean (*TQ3LightWorksSLSettingsDialog)(TQ3DialogAnchor anchor,
                                                    TQ3LightWorksSLSettings* settings);
void Q3LightWorks_SL_SetSettingsDialog(TQ3LightWorksSLSettingsDialog dialog);

/* Figures of the renderer's last picture. Rays are traced only where the
 * scene can be seen; the other pixels get the background at once. The view's
 * idle progress method is told how many of the traced pixels are done. */
typedef struct TQ3LightWorksSLStatistics {
    double primaryRays;   /* camera rays, one per surface layer crossed */
    double shadowRays;    /* rays towards lights */
    double tracedPixels;  /* pixels where the scene can be seen */
    double refinedPixels; /* pixels that got more samples */
    double triangles;     /* triangles in the picture's scene */
    double buildSeconds;  /* building the ray tracing structure */
    double renderSeconds; /* tracing, shading and writing the pixels */
    TQ3Uns32 threads;     /* threads that traced */
} TQ3LightWorksSLStatistics;

TQ3Status Q3LightWorks_SL_GetStatistics(TQ3RendererObject renderer,
                                        TQ3LightWorksSLStatistics* statistics);

#ifdef __cplusplus
}
#endif

#endif
