#include "platform/database/DatabaseFile.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/database/Database.h"

namespace fs = std::filesystem;

namespace {

enum class State { Usable, ReadOnly, Damaged, Newer, Foreign, Unreadable, Unusable };

struct Attempt {
    State state = State::Unusable;
    std::unique_ptr<Database> database;
    std::string reason;
};

bool CreateTables(const DatabaseKind& kind, Database& database) {
    if (database.Execute("BEGIN IMMEDIATE") != DatabaseResult::Done) return false;
    const std::string marks = "PRAGMA application_id=" + std::to_string(kind.mark) +
                              "; PRAGMA user_version=" + std::to_string(kind.version);
    const bool created = database.Execute(kind.tables) == DatabaseResult::Done &&
                         database.Execute(marks.c_str()) == DatabaseResult::Done;
    return database.Execute(created ? "COMMIT" : "ROLLBACK") == DatabaseResult::Done && created;
}

// A write survives the death of the process at once. In the write-ahead mode a write costs no wait for the
// disk; where that mode is refused the rollback journal needs the wait to survive a power cut undamaged.
void ChooseJournal(Database& database) {
    std::string mode;
    database.Query("PRAGMA journal_mode=WAL", mode);
    database.Execute(mode == "wal" ? "PRAGMA synchronous=NORMAL" : "PRAGMA synchronous=FULL");
}

State StateOf(DatabaseResult result) {
    return result == DatabaseResult::Damaged ? State::Damaged : State::Unusable;
}

State HasTables(const DatabaseKind& kind, Database& database, std::string& reason) {
    std::string answer;
    const DatabaseResult result = database.Query(kind.probe, answer);
    if (result == DatabaseResult::Done && answer == "1") return State::Usable;
    reason = result == DatabaseResult::Done ? "its first entry is missing" : database.Reason();
    const bool incomplete = result == DatabaseResult::Done || result == DatabaseResult::Refused;
    return incomplete ? State::Damaged : StateOf(result);
}

State CheckPages(Database& database, std::string& reason) {
    std::string health;
    const DatabaseResult result = database.Query("PRAGMA quick_check(1)", health);
    reason = result == DatabaseResult::Done ? health : database.Reason();
    if (result != DatabaseResult::Done) return StateOf(result);
    return health == "ok" ? State::Usable : State::Damaged;
}

// Looks at what the file holds; `reason` is filled for every state but Usable and ReadOnly.
State Inspect(const DatabaseKind& kind, Database& database, std::string& reason) {
    std::string mark;
    std::string version;
    std::string tables;
    // The tables first: another process may be creating them, and they come together with the marks.
    DatabaseResult result = database.Query("SELECT count(*) FROM sqlite_master", tables);
    if (result == DatabaseResult::Done) result = database.Query("PRAGMA application_id", mark);
    if (result == DatabaseResult::Done) result = database.Query("PRAGMA user_version", version);
    reason = database.Reason();
    if (result != DatabaseResult::Done) return StateOf(result);
    const bool fresh = tables == "0" && mark == "0";
    if (!fresh && mark != std::to_string(kind.mark)) return State::Foreign;
    if (std::atoi(version.c_str()) > kind.version) return State::Newer;
    if (const State state = CheckPages(database, reason); state != State::Usable) return state;
    if (database.IsReadOnly()) return State::ReadOnly;
    ChooseJournal(database);
    if (fresh && !CreateTables(kind, database)) {
        reason = database.Reason();
        return State::Unusable;
    }
    return HasTables(kind, database, reason);
}

bool IsUnreadableFile(const std::string& path) {
    std::error_code ignored;
    return fs::is_regular_file(path, ignored) && access(path.c_str(), R_OK) != 0 && errno == EACCES;
}

// Journals take their mode from the file.
void CreateForOwnerAlone(const std::string& path) {
    if (access(path.c_str(), F_OK) == 0) return;
    const int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file >= 0) close(file);
}

Attempt TryOpen(const DatabaseKind& kind, const std::string& path) {
    CreateForOwnerAlone(path);
    Attempt attempt;
    attempt.database = std::make_unique<Database>();
    const DatabaseResult result = attempt.database->Open(path.c_str());
    if (result == DatabaseResult::Done) {
        attempt.state = Inspect(kind, *attempt.database, attempt.reason);
    } else {
        attempt.reason = attempt.database->Reason();
        attempt.state = IsUnreadableFile(path) ? State::Unreadable : StateOf(result);
    }
    return attempt;
}

// Whether the file begins as a database of this kind does. Not while it is open as a database: closing it
// here would end that one's locks.
bool HasMark(const DatabaseKind& kind, const std::string& path) {
    constexpr char kMagic[] = "SQLite format 3";
    constexpr std::size_t kMarkAt = 68;  // a big-endian number of 4 bytes
    unsigned char header[kMarkAt + 4] = {};
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return false;
    const ssize_t size = read(file, header, sizeof header);
    close(file);
    if (size != static_cast<ssize_t>(sizeof header) || std::memcmp(header, kMagic, sizeof kMagic) != 0)
        return false;
    std::uint32_t mark = 0;
    for (std::size_t i = kMarkAt; i < sizeof header; ++i) mark = mark << 8 | header[i];
    return mark == kind.mark;
}

std::unique_ptr<Database> NewInMemory(const DatabaseKind& kind) {
    auto database = std::make_unique<Database>();
    if (database->Open(":memory:") != DatabaseResult::Done || !CreateTables(kind, *database)) return nullptr;
    return database;
}

// "The settings file PATH", with which most sentences begin.
std::string Subject(const DatabaseKind& kind, const std::string& path) {
    return std::string("The ") + kind.name + " " + path;
}

OpenedDatabase CopyToMemory(const DatabaseKind& kind, const std::string& path, Database& file) {
    auto database = std::make_unique<Database>();
    const bool copied = database->Open(":memory:") == DatabaseResult::Done &&
                        database->CopyFrom(file) == DatabaseResult::Done && CreateTables(kind, *database);
    if (!copied) database = NewInMemory(kind);
    return {std::move(database), Subject(kind, path) +
                                     " is write-protected.\nIt is read, but changes are lost when the "
                                     "program ends.\nTo keep them, allow writing to the file and its "
                                     "folder, then start again."};
}

// A name beside `path` that nothing has yet.
std::string NameForDamaged(const std::string& path) {
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    gmtime_r(&now, &utc);
    char stamp[32];
    std::strftime(stamp, sizeof stamp, "%Y%m%dT%H%M%SZ", &utc);
    const std::string name = path + ".damaged-" + stamp;
    std::error_code ignored;
    std::string free = name;
    for (int i = 2; fs::exists(fs::symlink_status(free, ignored)); ++i) free = name + "-" + std::to_string(i);
    return free;
}

// Its journal goes with the file: without it the copy might lose what could still be rescued.
bool SetAside(const std::string& path, const std::string& newName) {
    if (std::rename(path.c_str(), newName.c_str()) != 0) return false;
    for (const char* companion : {"-wal", "-shm", "-journal"})
        std::rename((path + companion).c_str(), (newName + companion).c_str());
    return true;
}

// Of several processes that find the same damaged file only one may rename it, while none is opening it: the
// others would rename the new file, or lose its journal to the rename. The lock lies on the folder, so that
// it leaves no file behind; where there is no locking we do without.
class FolderLock {
  public:
    FolderLock(const std::string& path, int operation)
        : folder_(open(fs::path(path).parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        if (folder_ >= 0) flock(folder_, operation);
    }
    ~FolderLock() {
        if (folder_ >= 0) close(folder_);
    }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

  private:
    int folder_;
};

std::string OwnerOf(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return "nobody known";
    const passwd* owner = getpwuid(status.st_uid);
    return owner ? owner->pw_name : "user " + std::to_string(status.st_uid);
}

OpenedDatabase Accept(const DatabaseKind& kind, const std::string& path, Attempt attempt) {
    const std::string elsewhere = kind.elsewhere;
    switch (attempt.state) {
        case State::Usable:
            return {std::move(attempt.database), ""};
        case State::ReadOnly:
            return CopyToMemory(kind, path, *attempt.database);
        case State::Newer:
            return OpenDatabaseInMemory(kind, path, "was written by a newer version of the program.",
                                        "Use that version, or " + elsewhere + ".");
        case State::Foreign:
            return OpenDatabaseInMemory(kind, path, "is a file of another program.",
                                        "It was left as it is; " + elsewhere + ".");
        case State::Unreadable:
            return OpenDatabaseInMemory(kind, path, "may not be read: it belongs to " + OwnerOf(path) + ".",
                                        "Have reading and writing allowed, or " + elsewhere + ".");
        default:
            return OpenDatabaseInMemory(kind, path, "cannot be opened (" + attempt.reason + ").",
                                        "See that the file and its folder can be read and written, or " +
                                            elsewhere + ", then start again.");
    }
}

OpenedDatabase ReplaceDamaged(const DatabaseKind& kind, const std::string& path, FilePlace place) {
    const FolderLock alone(path, LOCK_EX);
    Attempt damaged = TryOpen(kind, path);
    if (damaged.state != State::Damaged) return Accept(kind, path, std::move(damaged));
    damaged.database.reset();
    if (place == FilePlace::Named && !HasMark(kind, path)) {
        damaged.state = State::Foreign;
        return Accept(kind, path, std::move(damaged));
    }
    const std::string newName = NameForDamaged(path);
    if (!SetAside(path, newName))
        return OpenDatabaseInMemory(kind, path, "is damaged (" + damaged.reason + ") and cannot be renamed.",
                                    "Move it away, then start again.");
    OpenedDatabase opened = Accept(kind, path, TryOpen(kind, path));
    opened.notice = Subject(kind, path) + " is damaged (" + damaged.reason + ").\nIt was renamed to " +
                    newName +
                    ", and the program goes on with a new one.\nTo have the old one back, repair the renamed "
                    "file and move it to its old place." +
                    (opened.notice.empty() ? "" : "\n\n" + opened.notice);
    return opened;
}

// The standard asks for a private folder where it does not exist yet.
void CreateFolder(const fs::path& folder) {
    std::error_code ignored;
    if (!folder.empty() && fs::create_directories(folder, ignored))
        fs::permissions(folder, fs::perms::owner_all, ignored);
}

}  // namespace

OpenedDatabase OpenDatabaseInMemory(const DatabaseKind& kind, const std::string& path,
                                    const std::string& problem, const std::string& remedy) {
    return {NewInMemory(kind), Subject(kind, path) + " " + problem + "\n" + kind.consequence + "\n" + remedy};
}

OpenedDatabase OpenDatabaseFile(const DatabaseKind& kind, const std::string& path, FilePlace place) {
    std::error_code ignored;
    const std::string file = fs::absolute(path, ignored).string();
    CreateFolder(fs::path(file).parent_path());
    {
        const FolderLock shared(file, LOCK_SH);
        Attempt attempt = TryOpen(kind, file);
        if (attempt.state != State::Damaged) return Accept(kind, file, std::move(attempt));
    }
    return ReplaceDamaged(kind, file, place);
}
