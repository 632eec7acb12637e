#include "platform/registry/RegistryFile.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/database/Database.h"

namespace {

constexpr DatabaseKind kSettings{
    .name = "settings file",
    .mark = 0x5461766E,  // "Tavn"
    .version = 1,
    .tables = R"(
        CREATE TABLE IF NOT EXISTS rkey(
            id INTEGER PRIMARY KEY AUTOINCREMENT, parent INTEGER NOT NULL,
            name TEXT NOT NULL, fold TEXT NOT NULL, UNIQUE(parent, fold));
        CREATE TABLE IF NOT EXISTS rvalue(
            seq INTEGER PRIMARY KEY AUTOINCREMENT, key INTEGER NOT NULL,
            name TEXT NOT NULL, fold TEXT NOT NULL, kind INTEGER NOT NULL, data BLOB NOT NULL,
            UNIQUE(key, fold));
        CREATE INDEX IF NOT EXISTS rvalue_order ON rvalue(key);
        INSERT OR IGNORE INTO rkey(id, parent, name, fold) VALUES(1, 0, '', '');
    )",
    .probe = "SELECT id FROM rkey LEFT JOIN rvalue ON rvalue.key=rkey.id WHERE id=1",
    .consequence = "The program runs with default settings, and changes to them are lost when it ends.",
    .elsewhere = "name another file in TAVIN_REGISTRY",
};

}  // namespace

RegistryPlace RegistryPlaceFromEnvironment() {
    const char* file = std::getenv("TAVIN_REGISTRY");
    if (file && *file) return {file, FilePlace::Named};
    const char* config = std::getenv("XDG_CONFIG_HOME");
    // A relative path is invalid there and to be ignored.
    if (config && *config == '/') return {std::string(config) + "/tavin/registry.sqlite", FilePlace::Own};
    const char* home = std::getenv("HOME");
    if (!home || !*home) {
        const passwd* user = getpwuid(getuid());
        home = user ? user->pw_dir : nullptr;
    }
    if (!home || !*home) return {};
    return {std::string(home) + "/.config/tavin/registry.sqlite", FilePlace::Own};
}

OpenedDatabase OpenRegistryFile(const RegistryPlace& place) {
    if (place.path.empty())
        return OpenDatabaseInMemory(kSettings, "(none)", "has no place, for there is no home folder.",
                                    "Name a file in TAVIN_REGISTRY, then start again.");
    return OpenDatabaseFile(kSettings, place.path, place.kind);
}
