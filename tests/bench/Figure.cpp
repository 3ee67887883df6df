#include "Figure.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <string>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr int decimalsBelow = 20; // smaller values are printed with two decimals

QString number(double value)
{
    return QString::number(value, 'f', std::abs(value) < decimalsBelow && value != 0 ? 2 : 0);
}

QString spread(const QList<double>& values, const QString& unit)
{
    if (values.isEmpty())
        return u"-"_s;
    const auto [least, greatest] = std::minmax_element(values.cbegin(), values.cend());
    return u"%1 %2 (%3 - %4)"_s.arg(number(quantile(values, 0.5)), unit, number(*least), number(*greatest));
}

QStringList rowOf(const Figure& figure)
{
    QString target = u""_s;
    if (figure.target) {
        const bool isMet = quantile(figure.measured, 0.5) <= *figure.target;
        target = u"%1 %2 %3"_s.arg(number(*figure.target), figure.unit, isMet ? u"met"_s : u"MISSED"_s);
    }
    return {figure.name, spread(figure.measured, figure.unit),          QString::number(figure.measured.size()),
            target,      spread(figure.yardstickMeasured, figure.unit), figure.yardstick};
}

void print(const QStringList& row, const QList<qsizetype>& widths)
{
    QString line;
    for (qsizetype i = 0; i < row.size(); ++i)
        line += row[i].leftJustified(widths[i] + 2);
    std::printf("%s\n", qUtf8Printable(line.trimmed()));
}

} // namespace

double quantile(QList<double> values, double share)
{
    if (values.isEmpty())
        return 0;
    std::sort(values.begin(), values.end());
    const double index = share * double(values.size() - 1);
    const auto below = qsizetype(index);
    const auto above = std::min(below + 1, values.size() - 1);
    return values[below] + (values[above] - values[below]) * (index - double(below));
}

void printTable(const QList<Figure>& figures)
{
    QList<QStringList> rows{{u"figure"_s, u"median (least - greatest)"_s, u"of"_s, u"aim"_s, u"yardstick"_s, u""_s}};
    for (const Figure& figure : figures)
        rows.append(rowOf(figure));
    QList<qsizetype> widths(rows.first().size(), 0);
    for (const QStringList& row : rows) {
        for (qsizetype i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], row[i].size());
    }
    for (qsizetype i = 0; i < rows.size(); ++i) {
        print(rows[i], widths);
        if (i == 0)
            std::printf(
                "%s\n",
                std::string(size_t(std::accumulate(widths.cbegin(), widths.cend(), qsizetype(0)) + 12), '-').c_str());
    }
}

} // namespace quillmere
