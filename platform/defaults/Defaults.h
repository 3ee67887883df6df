#pragma once

#include <QString>

namespace quillmere {

/** Persistent numbers by key, kept between runs of the program. Screen thread only; must outlive its users. */
class Defaults
{
public:
    virtual ~Defaults() = default;

    /** The number stored under `key`, unchecked (it may be infinite or NaN); 0 if there is none. */
    virtual double number(const QString& key) const = 0;

    virtual bool contains(const QString& key) const = 0;
    virtual void setNumber(const QString& key, double value) = 0;
    virtual void remove(const QString& key) = 0;
};

} // namespace quillmere
