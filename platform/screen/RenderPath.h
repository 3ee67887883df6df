#pragma once

#include <QString>

/** How the screens get onto the glass. */
enum class RenderPath {
    Gpu,      ///< OpenGL through Qt's rendering interface
    Software, ///< Qt Quick's software adaptation, painted on the screen thread
    AsAsked   ///< the user of Qt named a back end in the environment; it is left alone
};

/** What the choice rests on. */
struct DisplayFacts
{
    bool askedFor = false;      ///< QT_QUICK_BACKEND or QSG_RHI_BACKEND is set
    bool hasRenderNode = false; ///< the kernel offers a GPU to draw with
    QString rasteriser;         ///< what OpenGL calls itself; empty when no context starts
};

RenderPath renderPathFor(const DisplayFacts& facts);

/**
 * Looks at the machine, chooses and tells Qt Quick. Once, on the screen thread, after the application object and before
 * the first window. OpenGL is tried only where there is a render node.
 */
RenderPath chooseRenderPath();
