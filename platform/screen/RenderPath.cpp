#include "RenderPath.h"

#include "Logging.h"

#include <QDir>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

bool isSoftwareRasteriser(const QString& name)
{
    for (const auto known : {"llvmpipe"_L1, "softpipe"_L1, "swrast"_L1, "Software Rasterizer"_L1}) {
        if (name.contains(known, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

bool machineHasRenderNode()
{
    return !QDir(u"/dev/dri"_s).entryList({u"renderD*"_s}, QDir::System | QDir::Files).isEmpty();
}

QString rasteriserOfThisMachine()
{
    QOpenGLContext context;
    if (!context.create())
        return {};
    QOffscreenSurface surface;
    surface.setFormat(context.format());
    surface.create();
    if (!surface.isValid() || !context.makeCurrent(&surface))
        return {};
    const auto name = reinterpret_cast<const char*>(context.functions()->glGetString(GL_RENDERER));
    const QString rasteriser = QString::fromLatin1(name);
    context.doneCurrent();
    return rasteriser;
}

} // namespace

RenderPath renderPathFor(const DisplayFacts& facts)
{
    if (facts.isSetInEnvironment)
        return RenderPath::FromEnvironment;
    const bool drawsInHardware =
        facts.hasRenderNode && !facts.rasteriser.isEmpty() && !isSoftwareRasteriser(facts.rasteriser);
    return drawsInHardware ? RenderPath::Gpu : RenderPath::Software;
}

RenderPath chooseRenderPath()
{
    DisplayFacts facts;
    facts.isSetInEnvironment =
        qEnvironmentVariableIsSet("QT_QUICK_BACKEND") || qEnvironmentVariableIsSet("QSG_RHI_BACKEND");
    if (!facts.isSetInEnvironment)
        facts.hasRenderNode = machineHasRenderNode();
    if (facts.hasRenderNode)
        facts.rasteriser = rasteriserOfThisMachine();

    const RenderPath path = renderPathFor(facts);
    qCInfo(logVideo).noquote() << "drawn"
                               << (path == RenderPath::Gpu        ? "by OpenGL:"
                                   : path == RenderPath::Software ? "in software;"
                                                                  : "as QT_QUICK_BACKEND asks")
                               << facts.rasteriser;
    if (path == RenderPath::Gpu)
        QQuickWindow::setGraphicsApi(QSGRendererInterface::OpenGL);
    else if (path == RenderPath::Software)
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    return path;
}

} // namespace quillmere
