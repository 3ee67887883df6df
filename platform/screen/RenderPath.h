#pragma once

#include <QString>

namespace quillmere {

/** How Qt Quick renders. */
enum class RenderPath {
    Gpu,            ///< OpenGL through Qt's rendering interface
    Software,       ///< Qt Quick's software renderer, on the screen thread
    FromEnvironment ///< a Qt environment variable chooses the back end; nothing is changed
};

/** Facts that the choice depends on. */
struct DisplayFacts
{
    bool isSetInEnvironment = false; ///< QT_QUICK_BACKEND or QSG_RHI_BACKEND is set
    bool hasRenderNode = false;      ///< a DRM render node exists
    QString rasteriser;              ///< GL_RENDERER; empty if no OpenGL context can be created
};

RenderPath renderPathFor(const DisplayFacts& facts);

/**
 * Inspects the machine, chooses the render path and configures Qt Quick. Called once, on the screen thread, after the
 * application object is created and before the first window. OpenGL is tried only if there is a render node.
 */
RenderPath chooseRenderPath();

} // namespace quillmere
