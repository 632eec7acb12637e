#include "app/table/Bytes.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <mutex>
#include <utility>

namespace app {

namespace {

// Where files are mapped. A page that the file has no longer is a bus error when it is read: the handler puts
// empty memory in its place, so that the reader goes on and finds out afterwards.
struct Mapping {
    std::atomic<bool> used{false};
    std::atomic<std::uintptr_t> begin{0};
    std::atomic<std::uintptr_t> end{0};
    std::atomic<bool> cut{false};
};
std::array<Mapping, 64> mappings;
struct sigaction handlerBefore {};
std::uintptr_t pageSize = 4096;

extern "C" void ReplaceLostPages(int number, siginfo_t* about, void* context) {
    const auto address = reinterpret_cast<std::uintptr_t>(about->si_addr);
    for (auto& mapping : mappings) {
        const std::uintptr_t end = mapping.end;
        if (!mapping.used || address < mapping.begin || address >= end) continue;
        const std::uintptr_t from = address / pageSize * pageSize;
        void* const empty = ::mmap(reinterpret_cast<void*>(from), end - from, PROT_READ,
                                   MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED | MAP_NORESERVE, -1, 0);
        mapping.cut = true;
        if (empty != MAP_FAILED) return;
    }
    if (handlerBefore.sa_flags & SA_SIGINFO && handlerBefore.sa_sigaction)
        return handlerBefore.sa_sigaction(number, about, context);
    ::signal(number, SIG_DFL);
}

void HandleLostPages() {
    static std::once_flag once;
    std::call_once(once, [] {
        pageSize = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
        struct sigaction action {};
        action.sa_sigaction = ReplaceLostPages;
        action.sa_flags = SA_SIGINFO | SA_NODEFER;
        sigemptyset(&action.sa_mask);
        ::sigaction(SIGBUS, &action, &handlerBefore);
    });
}

int Remember(const void* begin, std::size_t size) {
    for (std::size_t i = 0; i < mappings.size(); ++i) {
        Mapping& mapping = mappings[i];
        if (mapping.used.exchange(true)) continue;
        mapping.cut = false;
        mapping.begin = reinterpret_cast<std::uintptr_t>(begin);
        mapping.end = reinterpret_cast<std::uintptr_t>(begin) + size;
        return static_cast<int>(i);
    }
    return -1;
}

Mapping& At(int slot) { return mappings[static_cast<std::size_t>(slot)]; }

constexpr std::size_t kEdge = 512;  // bytes at either end that a growing file keeps

bool SameTime(const timespec& a, const timespec& b) { return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec; }

}  // namespace

Bytes::Bytes(std::string held, int file) : held_(std::move(held)) { Watch(file); }

void Bytes::Watch(int file) {
    file_ = ::fcntl(file, F_DUPFD_CLOEXEC, 0);
    if (file_ >= 0 && ::fstat(file_, &before_) == 0 && S_ISREG(before_.st_mode))
        edges_ = Edges();
    else if (file_ >= 0)
        ::close(std::exchange(file_, -1));
}

std::string Bytes::Edges() const {
    const auto size = static_cast<std::size_t>(before_.st_size);
    const std::size_t length = std::min(size, kEdge);
    std::string edges(2 * length, '\0');
    if (::pread(file_, edges.data(), length, 0) < 0) return {};
    if (::pread(file_, edges.data() + length, length, static_cast<off_t>(size - length)) < 0) return {};
    return edges;
}

Bytes Bytes::Mapped(int file) {
    Bytes bytes;
    bytes.Watch(file);
    if (bytes.file_ < 0 || bytes.before_.st_size == 0) return {};
    HandleLostPages();
    const auto size = static_cast<std::size_t>(bytes.before_.st_size);
    void* const begin = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, bytes.file_, 0);
    if (begin == MAP_FAILED) return {};
    bytes.mapped_ = static_cast<const char*>(begin);
    bytes.size_ = size;
    bytes.slot_ = Remember(begin, size);
    if (bytes.slot_ < 0) return {};
    ::madvise(begin, size, MADV_SEQUENTIAL);
    return bytes;
}

Bytes::~Bytes() {
    if (mapped_) ::munmap(const_cast<char*>(mapped_), size_);
    if (slot_ >= 0) {
        At(slot_).begin = At(slot_).end = 0;
        At(slot_).used = false;
    }
    if (file_ >= 0) ::close(file_);
}

Bytes::Bytes(Bytes&& other) noexcept { *this = std::move(other); }

Bytes& Bytes::operator=(Bytes&& other) noexcept {
    std::swap(held_, other.held_);
    std::swap(mapped_, other.mapped_);
    std::swap(size_, other.size_);
    std::swap(slot_, other.slot_);
    std::swap(released_, other.released_);
    std::swap(file_, other.file_);
    std::swap(before_, other.before_);
    std::swap(edges_, other.edges_);
    return *this;
}

void Bytes::Release(std::size_t end) const {
    constexpr std::size_t kBlock = std::size_t{1} << 20;
    end -= end % kBlock;
    if (end < released_) released_ = 0;  // a second walk over the bytes
    if (!mapped_ || end == released_ || At(slot_).cut) return;
    ::madvise(const_cast<char*>(mapped_) + released_, end - released_, MADV_DONTNEED);
    released_ = end;
}

Bytes::Change Bytes::Changed() const {
    if (slot_ >= 0 && At(slot_).cut) return Change::Rewritten;
    struct stat now {};
    if (file_ < 0 || ::fstat(file_, &now) != 0) return Change::None;
    if (now.st_size == before_.st_size && SameTime(now.st_mtim, before_.st_mtim)) return Change::None;
    return now.st_size > before_.st_size && Edges() == edges_ ? Change::Grown : Change::Rewritten;
}

}  // namespace app
