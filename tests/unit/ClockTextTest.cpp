#include "ClockText.h"
#include "Rows.h"
#include "TestMain.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <locale.h>

using namespace Qt::StringLiterals;

namespace quillmere {

class ClockTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // No number may depend on the system locale. If this locale is not installed, the test detects less.
        setlocale(LC_ALL, "de_DE.UTF-8");
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    }

    void positionIsFormattedAsClock_data()
    {
        rows<double, QString>({"seconds", "text"},
                              {{"start", 0.0, u"0:00"_s},
                               {"below a second", 0.999, u"0:00"_s},
                               {"seconds in two digits", 9.0, u"0:09"_s},
                               {"below a minute", 59.0, u"0:59"_s},
                               {"a fraction is dropped", 59.4, u"0:59"_s},
                               {"nearly a minute", 59.999, u"0:59"_s},
                               {"a minute", 60.0, u"1:00"_s},
                               {"minutes in one digit", 125.0, u"2:05"_s},
                               {"nearly an hour", 3599.9, u"59:59"_s},
                               {"an hour", 3600.0, u"1:00:00"_s},
                               {"hours", 3725.0, u"1:02:05"_s},
                               {"more than a day", 100000.0, u"27:46:40"_s},
                               {"largest resume position", 1e9, u"277777:46:40"_s},
                               {"negative", -5.0, u"0:00"_s},
                               {"not a number", std::nan(""), u"0:00"_s},
                               {"infinite", std::numeric_limits<double>::infinity(), u"2562047788015215:30:07"_s}});
    }

    void positionIsFormattedAsClock()
    {
        QFETCH(const double, seconds);
        QTEST(clockText(seconds), "text");
    }
};

QUILLMERE_TEST(ClockTextTest, QCoreApplication)

} // namespace quillmere

#include "ClockTextTest.moc"
