#include "platform/registry/RegistryFile.h"

#include <fcntl.h>
#include <pwd.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/registry/Database.h"

namespace fs = std::filesystem;

namespace {

// "Tavn": tells our file from another program's database.
constexpr const char* kApplicationId = "1415673454";
// Raised when the tables change so that older programs would harm them.
constexpr int kVersion = 1;

constexpr const char* kCreateTables = R"(
    CREATE TABLE IF NOT EXISTS rkey(
        id INTEGER PRIMARY KEY AUTOINCREMENT, parent INTEGER NOT NULL,
        name TEXT NOT NULL, fold TEXT NOT NULL, UNIQUE(parent, fold));
    CREATE TABLE IF NOT EXISTS rvalue(
        seq INTEGER PRIMARY KEY AUTOINCREMENT, key INTEGER NOT NULL,
        name TEXT NOT NULL, fold TEXT NOT NULL, kind INTEGER NOT NULL, data BLOB NOT NULL, UNIQUE(key, fold));
    CREATE INDEX IF NOT EXISTS rvalue_order ON rvalue(key);
    INSERT OR IGNORE INTO rkey(id, parent, name, fold) VALUES(1, 0, '', '');
)";

enum class State { Usable, ReadOnly, Damaged, Newer, Foreign, Unusable };

struct Attempt {
    State state = State::Unusable;
    std::unique_ptr<Database> database;
    std::string reason;
};

bool CreateTables(Database& database) {
    if (database.Execute("BEGIN IMMEDIATE") != SQLITE_OK) return false;
    const std::string marks = std::string("PRAGMA application_id=") + kApplicationId +
                              "; PRAGMA user_version=" + std::to_string(kVersion);
    const bool created =
        database.Execute(kCreateTables) == SQLITE_OK && database.Execute(marks.c_str()) == SQLITE_OK;
    return database.Execute(created ? "COMMIT" : "ROLLBACK") == SQLITE_OK && created;
}

// A write survives the death of the process at once. In the write-ahead mode a write costs no wait for the
// disk; where that mode is refused the rollback journal needs the wait to survive a power cut undamaged.
void ChooseJournal(Database& database) {
    std::string mode;
    database.Query("PRAGMA journal_mode=WAL", mode);
    database.Execute(mode == "wal" ? "PRAGMA synchronous=NORMAL" : "PRAGMA synchronous=FULL");
}

State StateOf(int result) {
    const int primary = result & 0xFF;
    return primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB ? State::Damaged : State::Unusable;
}

State HasTables(Database& database, std::string& reason) {
    std::string root;
    const int result =
        database.Query("SELECT id FROM rkey LEFT JOIN rvalue ON rvalue.key=rkey.id WHERE id=1", root);
    if (result == SQLITE_OK && root == "1") return State::Usable;
    reason = result == SQLITE_OK ? "its first entry is missing" : database.Reason();
    const bool incomplete = result == SQLITE_OK || (result & 0xFF) == SQLITE_ERROR;
    return incomplete ? State::Damaged : StateOf(result);
}

State CheckPages(Database& database, std::string& reason) {
    std::string health;
    const int result = database.Query("PRAGMA quick_check(1)", health);
    reason = result == SQLITE_OK ? health : database.Reason();
    if (result != SQLITE_OK) return StateOf(result);
    return health == "ok" ? State::Usable : State::Damaged;
}

// Looks at what the file holds; `reason` is filled for every state but Usable and ReadOnly.
State Inspect(Database& database, std::string& reason) {
    std::string id;
    std::string version;
    std::string tables;
    // The tables first: another process may be creating them, and they come together with the marks.
    int result = database.Query("SELECT count(*) FROM sqlite_master", tables);
    if (result == SQLITE_OK) result = database.Query("PRAGMA application_id", id);
    if (result == SQLITE_OK) result = database.Query("PRAGMA user_version", version);
    reason = database.Reason();
    if (result != SQLITE_OK) return StateOf(result);
    const bool fresh = tables == "0" && id == "0";
    if (!fresh && id != kApplicationId) return State::Foreign;
    if (std::atoi(version.c_str()) > kVersion) return State::Newer;
    if (const State state = CheckPages(database, reason); state != State::Usable) return state;
    if (database.IsReadOnly()) return State::ReadOnly;
    ChooseJournal(database);
    if (fresh && !CreateTables(database)) {
        reason = database.Reason();
        return State::Unusable;
    }
    return HasTables(database, reason);
}

bool IsUnreadableFile(const std::string& path) {
    std::error_code ignored;
    return fs::is_regular_file(path, ignored) && access(path.c_str(), R_OK) != 0 && errno == EACCES;
}

Attempt TryOpen(const std::string& path) {
    Attempt attempt;
    attempt.database = std::make_unique<Database>();
    const int result = attempt.database->Open(path.c_str());
    if (result == SQLITE_OK) {
        attempt.state = Inspect(*attempt.database, attempt.reason);
    } else {
        attempt.reason = attempt.database->Reason();
        attempt.state = IsUnreadableFile(path) ? State::Damaged : StateOf(result);
    }
    return attempt;
}

std::unique_ptr<Database> OpenInMemory() {
    auto database = std::make_unique<Database>();
    if (database->Open(":memory:") != SQLITE_OK || !CreateTables(*database)) return nullptr;
    return database;
}

OpenedRegistry InMemory(const std::string& path, const std::string& problem, const std::string& remedy) {
    return {OpenInMemory(), "The settings file " + path + " " + problem +
                                "\nThe program runs with default settings, and changes to them are lost "
                                "when it ends.\n" +
                                remedy};
}

OpenedRegistry CopyToMemory(const std::string& path, Database& file) {
    auto database = std::make_unique<Database>();
    const bool copied = database->Open(":memory:") == SQLITE_OK && database->CopyFrom(file) == SQLITE_OK &&
                        CreateTables(*database);
    if (!copied) database = OpenInMemory();
    return {std::move(database), "The settings file " + path +
                                     " is write-protected.\nSettings are read from it, but changes are lost "
                                     "when the program ends.\nTo keep them, allow writing to the file and "
                                     "its folder, then start again."};
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

OpenedRegistry Accept(const std::string& path, Attempt attempt) {
    switch (attempt.state) {
        case State::Usable:
            return {std::move(attempt.database), ""};
        case State::ReadOnly:
            return CopyToMemory(path, *attempt.database);
        case State::Newer:
            return InMemory(path, "was written by a newer version of the program.",
                            "Use that version, or name another file in TAVIN_REGISTRY.");
        case State::Foreign:
            return InMemory(path, "is a database of another program.",
                            "Name another file in TAVIN_REGISTRY.");
        default:
            return InMemory(path, "cannot be opened (" + attempt.reason + ").",
                            "See that the file and its folder can be read and written, or name another file "
                            "in TAVIN_REGISTRY, then start again.");
    }
}

OpenedRegistry ReplaceDamaged(const std::string& path) {
    const FolderLock alone(path, LOCK_EX);
    Attempt damaged = TryOpen(path);
    if (damaged.state != State::Damaged) return Accept(path, std::move(damaged));
    damaged.database.reset();
    const std::string newName = NameForDamaged(path);
    if (!SetAside(path, newName))
        return InMemory(path, "is damaged (" + damaged.reason + ") and cannot be renamed.",
                        "Move it away, then start again.");
    OpenedRegistry opened = Accept(path, TryOpen(path));
    opened.notice = "The settings file " + path + " is damaged (" + damaged.reason +
                    ").\nIt was renamed to " + newName +
                    ", and the program goes on with new settings.\nTo have the old settings back, repair the "
                    "renamed file and move it to its old place." +
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

std::string RegistryFileFromEnvironment() {
    const char* file = std::getenv("TAVIN_REGISTRY");
    if (file && *file) return file;
    const char* config = std::getenv("XDG_CONFIG_HOME");
    // A relative path is invalid there and to be ignored.
    if (config && *config == '/') return std::string(config) + "/tavin/registry.sqlite";
    const char* home = std::getenv("HOME");
    if (!home || !*home) {
        const passwd* user = getpwuid(getuid());
        home = user ? user->pw_dir : nullptr;
    }
    return home && *home ? std::string(home) + "/.config/tavin/registry.sqlite" : std::string();
}

OpenedRegistry OpenRegistryFile(const std::string& path) {
    if (path.empty())
        return InMemory("(none)", "has no place, for there is no home folder.",
                        "Name a file in TAVIN_REGISTRY, then start again.");
    std::error_code ignored;
    const std::string file = fs::absolute(path, ignored).string();
    CreateFolder(fs::path(file).parent_path());
    {
        const FolderLock shared(file, LOCK_SH);
        Attempt attempt = TryOpen(file);
        if (attempt.state != State::Damaged) return Accept(file, std::move(attempt));
    }
    return ReplaceDamaged(file);
}
