#include "RenderPath.h"
#include "TestMain.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

class RenderPathTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void gpuIsUsedOnlyIfItRenders_data();
    void gpuIsUsedOnlyIfItRenders();
};

void RenderPathTest::gpuIsUsedOnlyIfItRenders_data()
{
    QTest::addColumn<bool>("isSetInEnvironment");
    QTest::addColumn<bool>("hasRenderNode");
    QTest::addColumn<QString>("rasteriser");
    QTest::addColumn<RenderPath>("path");

    QTest::newRow("no GPU") << false << false << QString() << RenderPath::Software;
    QTest::newRow("a GPU whose OpenGL does not start") << false << true << QString() << RenderPath::Software;
    QTest::newRow("a GPU") << false << true << u"Mesa Intel(R) UHD Graphics 600 (GLK 2)"_s << RenderPath::Gpu;
    QTest::newRow("an embedded GPU") << false << true << u"V3D 4.2"_s << RenderPath::Gpu;
    QTest::newRow("llvmpipe behind a render node")
        << false << true << u"llvmpipe (LLVM 15.0.6, 256 bits)"_s << RenderPath::Software;
    QTest::newRow("softpipe") << false << true << u"softpipe"_s << RenderPath::Software;
    QTest::newRow("swrast") << false << true << u"Mesa DRI swrast"_s << RenderPath::Software;
    QTest::newRow("chosen by the user") << true << true << u"V3D 4.2"_s << RenderPath::FromEnvironment;
}

void RenderPathTest::gpuIsUsedOnlyIfItRenders()
{
    QFETCH(bool, isSetInEnvironment);
    QFETCH(bool, hasRenderNode);
    QFETCH(QString, rasteriser);
    QTEST(renderPathFor({isSetInEnvironment, hasRenderNode, rasteriser}), "path");
}

QUILLMERE_TEST(RenderPathTest, QCoreApplication)

} // namespace quillmere

#include "RenderPathTest.moc"
