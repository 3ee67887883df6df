#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace quillmere {

/** One row of the table: measurements of the program and, from the same run, of a yardstick to compare them with. */
struct Figure
{
    QString name;
    QString unit;
    QList<double> measured;
    QString yardstick; ///< name of the yardstick; empty if there is none
    QList<double> yardstickMeasured;
    std::optional<double> target; ///< greatest acceptable median
};

/** Linear interpolation of the quantile at `share`, 0 to 1; 0 if there are no values. */
double quantile(QList<double> values, double share);

/** Prints all rows, each with its median, minimum and maximum. */
void printTable(const QList<Figure>& figures);

} // namespace quillmere
