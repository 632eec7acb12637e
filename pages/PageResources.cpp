#include "pages/PageResources.h"

HINSTANCE TavinModule() {
    static constexpr char kModule = 0;
    return &kModule;
}
