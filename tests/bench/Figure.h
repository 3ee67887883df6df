#pragma once

#include <QList>
#include <QString>

#include <optional>

/** One row of the table: what was measured of the program, beside its yardstick measured in the same run. */
struct Figure
{
    QString name;
    QString unit;
    QList<double> measured;
    QString yardstick; ///< what it is measured against; empty when there is none
    QList<double> yardstickMeasured;
    std::optional<double> aim; ///< at most
};

/** The value below which `share`, 0 to 1, of the values lie; 0 for none. */
double quantile(QList<double> values, double share);

/** Prints all rows, each as its median with the spread from the least to the greatest. */
void printTable(const QList<Figure>& figures);
