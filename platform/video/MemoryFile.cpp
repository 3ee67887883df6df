#include "MemoryFile.h"

#include <sys/mman.h>
#include <unistd.h>

namespace quillmere {

MemoryFile::MemoryFile(const char* name, const QByteArray& content) : m_descriptor(memfd_create(name, MFD_CLOEXEC))
{
    for (qsizetype written = 0; isValid() && written < content.size();) {
        const ssize_t step = write(m_descriptor, content.constData() + written, size_t(content.size() - written));
        if (step <= 0) {
            close(m_descriptor);
            m_descriptor = -1;
        }
        written += step;
    }
}

MemoryFile::~MemoryFile()
{
    if (isValid())
        close(m_descriptor);
}

QByteArray MemoryFile::path() const
{
    return "/proc/self/fd/" + QByteArray::number(m_descriptor);
}

} // namespace quillmere
