#pragma once

#include <QString>

/**
 * Numbers kept between runs, by key. Screen thread only; it outlives those who were given it.
 */
class Defaults
{
public:
    virtual ~Defaults() = default;

    /** The number kept under `key` as it stands (it may not be finite); 0 when there is none. */
    virtual double number(const QString& key) const = 0;

    virtual bool contains(const QString& key) const = 0;
    virtual void setNumber(const QString& key, double value) = 0;
    virtual void remove(const QString& key) = 0;
};
