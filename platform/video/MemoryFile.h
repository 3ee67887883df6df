#pragma once

#include <QByteArray>

/** A file that lives in memory, for libraries that take nothing but a file's name. Gone with the object. Any thread. */
class MemoryFile
{
public:
    MemoryFile(const char* name, const QByteArray& content);
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /** False when the system would not hold it. */
    bool isValid() const { return m_descriptor >= 0; }

    /** A path that this process can open and read from the start, any number of times. */
    QByteArray path() const;

private:
    int m_descriptor = -1;
};
