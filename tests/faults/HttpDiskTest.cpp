#include "HttpServerFixture.h"
#include "TestMain.h"

#include <QDirIterator>
#include <QTemporaryDir>

namespace quillmere {

namespace {

QTemporaryDir& home()
{
    static QTemporaryDir folder;
    return folder;
}

/** An application whose files are all in a temporary folder. */
class ApplicationInTemporaryHome : public QCoreApplication
{
public:
    ApplicationInTemporaryHome(int& argc, char** argv) : QCoreApplication((useTemporaryHome(), argc), argv) {}

private:
    static void useTemporaryHome()
    {
        for (const char* const variable :
             {"HOME", "TMPDIR", "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"})
            qputenv(variable, home().path().toLocal8Bit());
    }
};

} // namespace

/** The HTTP client writes nothing to disk. */
class HttpDiskTest : public HttpServerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsWrittenToDisk()
    {
        m_server->on("/", FaultServer::answer(200, "kept", {"ETag: \"1\"", "Set-Cookie: a=b; Max-Age=9999"}));
        get();
        get();
        m_client.reset();
        QDirIterator files(home().path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        QVERIFY2(!files.hasNext(), qPrintable(files.next()));
    }
};

QUILLMERE_TEST(HttpDiskTest, ApplicationInTemporaryHome)

} // namespace quillmere

#include "HttpDiskTest.moc"
