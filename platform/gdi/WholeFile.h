// A file that a library writes in memory and that goes to the disk at the end, whole or not at all. Qt's own
// files take a write that was cut short, on a full disk, for done.
#pragma once

#include <memory>

class QIODevice;

class WholeFile {
  public:
    explicit WholeFile(const char* path);
    ~WholeFile();

    bool IsOpen() const;
    QIODevice& Bytes();
    bool Commit();

  private:
    struct Devices;
    std::unique_ptr<Devices> devices_;
};
