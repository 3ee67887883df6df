#pragma once

#include "VHSCover.h"

#include <QImage>
#include <QMargins>
#include <QSize>

/** A painted cassette. A value, any thread. */
struct CassettePicture
{
    QImage image; ///< null if there was no memory for it
    QRect box;    ///< where the box stands in it; the outline and a long bar code reach beyond
};

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
    QSize pixels;     ///< of the display, the box's

    bool operator==(const CassettePrint&) const = default;

    CassettePicture paint() const;

private:
    QMargins margins() const;
};

size_t qHash(const CassettePrint& print, size_t seed = 0) noexcept;
