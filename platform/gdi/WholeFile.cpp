#include "platform/gdi/WholeFile.h"

#include <QBuffer>
#include <QSaveFile>

struct WholeFile::Devices {
    QSaveFile file;
    QBuffer bytes;
};

WholeFile::WholeFile(const char* path) : m_devices(std::make_unique<Devices>()) {
    m_devices->file.setFileName(QString::fromUtf8(path));
    if (m_devices->file.open(QIODevice::WriteOnly)) m_devices->bytes.open(QIODevice::WriteOnly);
}

WholeFile::~WholeFile() = default;

bool WholeFile::IsOpen() const { return m_devices->bytes.isOpen(); }

QIODevice& WholeFile::Bytes() { return m_devices->bytes; }

bool WholeFile::Commit() {
    const QByteArray& bytes = m_devices->bytes.data();
    QSaveFile& file = m_devices->file;
    for (qint64 at = 0; at < bytes.size();) {
        const qint64 written = file.write(bytes.constData() + at, bytes.size() - at);
        if (written <= 0) return false;
        at += written;
    }
    return file.flush() && file.commit();
}
