// The file behind the registry: where it is, and opening it whatever state it is in.
#pragma once

#include <memory>
#include <string>

class Database;

// $TAVIN_REGISTRY, else tavin/registry.sqlite in $XDG_CONFIG_HOME, else in ~/.config; empty without a home.
std::string RegistryFileFromEnvironment();

struct OpenedRegistry {
    // Ready for use, with its tables; null only without memory. In memory when the file cannot be used.
    std::unique_ptr<Database> database;
    // What the user should know: what is wrong, where, and what to do. Empty when all is well.
    std::string notice;
};

// Opens the file and creates what is missing. A damaged or unreadable file is renamed and a new one begun; a
// file of a newer version or of another program stays as it is, and settings are then kept in memory; a
// write-protected file is read, and changes are kept in memory.
OpenedRegistry OpenRegistryFile(const std::string& path);
