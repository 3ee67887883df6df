#include "RenderPath.h"
#include "Rows.h"
#include "TestMain.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

class RenderPathTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void gpuIsUsedOnlyIfItRenders_data()
    {
        rows<bool, bool, QString, RenderPath>(
            {"isSetInEnvironment", "hasRenderNode", "rasteriser", "path"},
            {{"no GPU", false, false, u""_s, RenderPath::Software},
             {"a GPU whose OpenGL does not start", false, true, u""_s, RenderPath::Software},
             {"a GPU", false, true, u"Mesa Intel(R) UHD Graphics 600 (GLK 2)"_s, RenderPath::Gpu},
             {"an embedded GPU", false, true, u"V3D 4.2"_s, RenderPath::Gpu},
             {"llvmpipe behind a render node", false, true, u"llvmpipe (LLVM 15.0.6, 256 bits)"_s,
              RenderPath::Software},
             {"softpipe", false, true, u"softpipe"_s, RenderPath::Software},
             {"swrast", false, true, u"Mesa DRI swrast"_s, RenderPath::Software},
             {"chosen by the user", true, true, u"V3D 4.2"_s, RenderPath::FromEnvironment}});
    }
    void gpuIsUsedOnlyIfItRenders()
    {
        QFETCH(bool, isSetInEnvironment);
        QFETCH(bool, hasRenderNode);
        QFETCH(QString, rasteriser);
        QTEST(renderPathFor({isSetInEnvironment, hasRenderNode, rasteriser}), "path");
    }
};

QUILLMERE_TEST(RenderPathTest, QCoreApplication)

} // namespace quillmere

#include "RenderPathTest.moc"
