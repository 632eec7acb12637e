// The file behind the registry: where it is and what it holds.
#pragma once

#include <string>

#include "platform/database/DatabaseFile.h"

struct RegistryPlace {
    std::string path;
    FilePlace kind = FilePlace::Named;
};

// $TAVIN_REGISTRY, else tavin/registry.sqlite in $XDG_CONFIG_HOME, else in ~/.config; empty without a home.
RegistryPlace RegistryPlaceFromEnvironment();

OpenedDatabase OpenRegistryFile(const RegistryPlace& place);
