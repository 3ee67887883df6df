#include "PlaybackTexts.h"
#include "TestMain.h"

#include <QLocale>
#include <QTest>

#include <limits>
#include <locale.h>

using namespace Qt::StringLiterals;

namespace quillmere {

using Cause = VideoFailure::Cause;

class PlaybackTextsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void remainingTimeIsFormattedAsClock_data();
    void remainingTimeIsFormattedAsClock();
    void scrubTextShowsDirectionAndSpeed();
    void trackHasName_data();
    void trackHasName();
    void failureHasText_data();
    void failureHasText();
    void withoutFailureThereIsNoText();
};

void PlaybackTextsTest::initTestCase()
{
    // No text may depend on the system locale. If this locale is not installed, the test detects less.
    setlocale(LC_ALL, "de_DE.UTF-8");
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
}

void PlaybackTextsTest::remainingTimeIsFormattedAsClock_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<double>("duration");
    QTest::addColumn<QString>("text");
    QTest::newRow("minutes") << 60.0 << 814.0 << u"-12:34"_s;
    QTest::newRow("hours") << 0.0 << 3725.0 << u"-1:02:05"_s;
    QTest::newRow("rounded with the played time, before the second") << 9.99 << 100.5 << u"-1:31"_s;
    QTest::newRow("rounded with the played time, after the second") << 10.0 << 100.5 << u"-1:30"_s;
    QTest::newRow("the end") << 814.0 << 814.0 << u"-0:00"_s;
    QTest::newRow("beyond the end") << 820.0 << 814.0 << u"-0:00"_s;
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << 814.0 << u"-0:00"_s;
}

void PlaybackTextsTest::remainingTimeIsFormattedAsClock()
{
    QFETCH(const double, position);
    QFETCH(const double, duration);
    QTEST(remainingText(position, duration), "text");
}

void PlaybackTextsTest::scrubTextShowsDirectionAndSpeed()
{
    QCOMPARE(scrubbingText(8), u"Fast forward 8×"_s);
    QCOMPARE(scrubbingText(-128), u"Rewind 128×"_s);
}

void PlaybackTextsTest::trackHasName_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("text");
    QTest::newRow("title") << u"The clerk's notes"_s << u"en"_s << u"The clerk's notes"_s;
    QTest::newRow("language of two letters") << QString() << u"en"_s << u"English"_s;
    QTest::newRow("language of three letters") << QString() << u"spa"_s << u"Spanish"_s;
    QTest::newRow("bibliographic code of three letters") << QString() << u"ger"_s << u"German"_s;
    QTest::newRow("language with a country") << QString() << u"fr-CA"_s << u"French"_s;
    QTest::newRow("undetermined") << QString() << u"und"_s << u"Track 3"_s;
    QTest::newRow("invalid language") << QString() << u"x"_s << u"Track 3"_s;
    QTest::newRow("no title and no language") << QString() << QString() << u"Track 3"_s;
    QTest::newRow("a title of two lines") << u"one\ntwo"_s << QString() << u"one two"_s;
}

void PlaybackTextsTest::trackHasName()
{
    QFETCH(const QString, title);
    QFETCH(const QString, language);
    QTEST(trackText({3, MediaTrack::Kind::Audio, title, language, false}), "text");
}

void PlaybackTextsTest::failureHasText_data()
{
    QTest::addColumn<Cause>("cause");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("text");
    QTest::newRow("unknown") << Cause::Unknown << 0 << QString();
    QTest::newRow("no plug-in") << Cause::NoPlugin << 0 << u"The player couldn't be started."_s;
    QTest::newRow("no picture") << Cause::NoPicture << 0 << u"This set has no way to show the picture."_s;
    QTest::newRow("address") << Cause::BadAddress << 0 << u"The tape's address can't be opened."_s;
    QTest::newRow("404") << Cause::Status << 404 << u"The hub answered 404."_s;
    QTest::newRow("503") << Cause::Status << 503 << u"The hub answered 503."_s;
    QTest::newRow("refused") << Cause::Refused << 0 << u"The connection was refused."_s;
    QTest::newRow("certificate") << Cause::Certificate << 0 << u"The hub's certificate isn't valid."_s;
    QTest::newRow("timed out") << Cause::TimedOut << 0 << u"The hub stopped answering."_s;
    QTest::newRow("network") << Cause::Network << 0 << u"The hub couldn't be reached."_s;
    QTest::newRow("unplayable") << Cause::Unplayable << 0 << u"What the hub sent can't be played."_s;
    QTest::newRow("broken stream") << Cause::BrokenStream << 0
                                   << u"The tape broke off, and the hub doesn't give the rest."_s;
}

void PlaybackTextsTest::failureHasText()
{
    QFETCH(const Cause, cause);
    QFETCH(const int, status);
    QTEST(failureText(VideoFailure{cause, status, u"for developers"_s}), "text");
}

void PlaybackTextsTest::withoutFailureThereIsNoText()
{
    QCOMPARE(failureText(std::nullopt), QString());
}

QUILLMERE_TEST(PlaybackTextsTest, QCoreApplication)

} // namespace quillmere

#include "PlaybackTextsTest.moc"
