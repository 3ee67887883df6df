#pragma once

#include "VHSCover.h"

#include <QImage>
#include <QSize>

/** What one picture of a cassette shows, and how large; two equal ones give the same picture. A value, any thread. */
struct CassettePrint
{
    enum class Form { BoxFront, ShelfCard };

    CassettePrint() = default;
    /** Of `cover` it takes only what is drawn. */
    CassettePrint(Form form, const VHSCover& cover, double width, QSize pixels);

    Form form = Form::BoxFront;
    VHSCover cover;
    double width = 0; ///< points
    QSize pixels;     ///< of the display

    bool operator==(const CassettePrint&) const = default;

    /** Null if there is no memory for it. */
    QImage paint() const;
};

size_t qHash(const CassettePrint& print, size_t seed = 0) noexcept;
