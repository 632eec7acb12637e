// The bytes of an input: a regular file mapped into memory, or bytes that are held.
//
// A file that becomes shorter while it is mapped reads as bytes of value 0 from there on, and Changed()
// tells.
#pragma once

#include <sys/stat.h>

#include <string>
#include <string_view>

namespace app {

class Bytes {
  public:
    Bytes() = default;
    Bytes(std::string held) : held_(std::move(held)) {}
    // Bytes that were read from the open file `file`.
    Bytes(std::string held, int file);
    // Maps all of the regular file that is open as `file`; empty where that cannot be done.
    static Bytes Mapped(int file);
    ~Bytes();
    Bytes(Bytes&& other) noexcept;
    Bytes& operator=(Bytes&& other) noexcept;

    std::string_view View() const { return mapped_ ? std::string_view(mapped_, size_) : held_; }
    operator std::string_view() const { return View(); }
    std::size_t size() const { return View().size(); }
    // Gives back the memory of the bytes before `end`, which come from the file again when they are wanted.
    void Release(std::size_t end) const;

    enum class Change { None, Grown, Rewritten };
    // Whether the file that the bytes come from has been written to since.
    Change Changed() const;

  private:
    void Watch(int file);
    std::string Edges() const;

    std::string held_;
    const char* mapped_ = nullptr;
    std::size_t size_ = 0;
    int slot_ = -1;
    mutable std::size_t released_ = 0;
    int file_ = -1;  // a descriptor of our own; -1 where the bytes come from no file
    struct stat before_ {};
    std::string edges_;  // the first and last bytes as they were
};

}  // namespace app
