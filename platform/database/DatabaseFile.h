// A database file of the program's own: opening it whatever state it is in, so that the program always has a
// database to work with and the user knows why when it is not the file's.
//
// What is not there is created, for its owner alone. A damaged file is renamed, never overwritten, and a new
// one begun. A file of another program, of a newer version or one that may not be read stays as it is, and
// the database is then in memory; so is the copy of a write-protected one.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

class Database;

// What a kind of file holds, and what is said of it.
struct DatabaseKind {
    const char* name;         // "settings file"
    std::uint32_t mark;       // tells it from another program's database
    int version;              // raised when the tables change so that older programs would harm them
    const char* tables;       // statements that create the tables where they are missing
    const char* probe;        // a query over the tables whose answer is 1 when what they must hold is there
    const char* consequence;  // what the program does without the file; a sentence
    const char* elsewhere;    // how another file is chosen, as the end of a sentence
};

// A file at the program's own place is the program's whatever it holds. One that the user named is so only
// with the mark in its header: any other is left alone.
enum class FilePlace { Own, Named };

struct OpenedDatabase {
    // Ready for use, with its tables; null only without memory.
    std::unique_ptr<Database> database;
    // What the user should know: what is wrong, where, and what to do. Empty when all is well.
    std::string notice;
};

OpenedDatabase OpenDatabaseFile(const DatabaseKind& kind, const std::string& path, FilePlace place);
// The same without a file.
OpenedDatabase OpenDatabaseInMemory(const DatabaseKind& kind, const std::string& path,
                                    const std::string& problem, const std::string& remedy);
