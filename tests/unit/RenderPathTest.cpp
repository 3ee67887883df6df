#include "RenderPath.h"

#include <QTest>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(RenderPath)

class RenderPathTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theGpuIsUsedOnlyWhereItReallyDraws_data();
    void theGpuIsUsedOnlyWhereItReallyDraws();
};

void RenderPathTest::theGpuIsUsedOnlyWhereItReallyDraws_data()
{
    QTest::addColumn<bool>("askedFor");
    QTest::addColumn<bool>("hasRenderNode");
    QTest::addColumn<QString>("rasteriser");
    QTest::addColumn<RenderPath>("path");

    QTest::newRow("no GPU") << false << false << QString() << RenderPath::Software;
    QTest::newRow("a GPU whose OpenGL does not start") << false << true << QString() << RenderPath::Software;
    QTest::newRow("a GPU") << false << true << u"Mesa Intel(R) UHD Graphics 600 (GLK 2)"_s << RenderPath::Gpu;
    QTest::newRow("a small GPU") << false << true << u"V3D 4.2"_s << RenderPath::Gpu;
    QTest::newRow("llvmpipe behind a render node")
        << false << true << u"llvmpipe (LLVM 15.0.6, 256 bits)"_s << RenderPath::Software;
    QTest::newRow("softpipe") << false << true << u"softpipe"_s << RenderPath::Software;
    QTest::newRow("swrast") << false << true << u"Mesa DRI swrast"_s << RenderPath::Software;
    QTest::newRow("the user's own choice") << true << true << u"V3D 4.2"_s << RenderPath::AsAsked;
}

void RenderPathTest::theGpuIsUsedOnlyWhereItReallyDraws()
{
    QFETCH(bool, askedFor);
    QFETCH(bool, hasRenderNode);
    QFETCH(QString, rasteriser);
    QTEST(renderPathFor({askedFor, hasRenderNode, rasteriser}), "path");
}

QTEST_GUILESS_MAIN(RenderPathTest)
#include "RenderPathTest.moc"
