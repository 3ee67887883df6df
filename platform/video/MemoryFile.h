#pragma once

#include <QByteArray>

namespace quillmere {

/** A file in memory, for libraries that accept only a file name. Exists as long as the object. Any thread. */
class MemoryFile
{
public:
    MemoryFile(const char* name, const QByteArray& content);
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /** False if the system could not create or fill the file. */
    bool isValid() const { return m_descriptor >= 0; }

    /** A path under which this process can open the file, any number of times; each reads from the start. */
    QByteArray path() const;

private:
    int m_descriptor = -1;
};

} // namespace quillmere
