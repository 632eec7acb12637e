#include "platform/gdi/WholeFile.h"

#include <QBuffer>
#include <QSaveFile>

struct WholeFile::Devices {
    QSaveFile file;
    QBuffer bytes;
};

WholeFile::WholeFile(const char* path) : devices_(std::make_unique<Devices>()) {
    devices_->file.setFileName(QString::fromUtf8(path));
    if (devices_->file.open(QIODevice::WriteOnly)) devices_->bytes.open(QIODevice::WriteOnly);
}

WholeFile::~WholeFile() = default;

bool WholeFile::IsOpen() const { return devices_->bytes.isOpen(); }

QIODevice& WholeFile::Bytes() { return devices_->bytes; }

bool WholeFile::Commit() {
    const QByteArray& bytes = devices_->bytes.data();
    QSaveFile& file = devices_->file;
    for (qint64 at = 0; at < bytes.size();) {
        const qint64 written = file.write(bytes.constData() + at, bytes.size() - at);
        if (written <= 0) return false;
        at += written;
    }
    return file.flush() && file.commit();
}
