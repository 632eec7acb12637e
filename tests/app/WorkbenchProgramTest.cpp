// The program as it is started, with a display and without one.
#include <cstdlib>

#include "tests/app/WorkbenchTest.h"

namespace app {
namespace {

bool Installed(const char* program) {
    return std::system((std::string("command -v ") + program + " >/dev/null 2>&1").c_str()) == 0;
}

TEST(WorkbenchUnderX, OpensTheSampleAndLeavesOnCtrlQ) {
    if (!Installed("Xvfb") || !Installed("xdotool"))
        GTEST_SKIP() << "Xvfb and xdotool are not installed (scripts/packages.sh names the packages)";
    const Folder folder;
    folder.Write("days.csv", TenDays());
    // The server chooses a free display and says which.
    folder.Write("smoke.sh", R"sh(cd "$(dirname "$0")"
Xvfb -displayfd 3 -screen 0 900x600x24 -nolisten tcp 3>display >/dev/null 2>&1 &
server=$!
for _ in $(seq 200); do [ -s display ] && break; sleep 0.05; done
export DISPLAY=:$(cat display) XDG_RUNTIME_DIR=$PWD
unset QT_QPA_PLATFORM WAYLAND_DISPLAY
timeout 60 "$1" days.csv & program=$!
window=$(timeout 50 xdotool search --sync --onlyvisible --name days | tail -n 1)
xdotool windowfocus "$window"
xdotool key ctrl+q
wait $program; result=$?
kill $server
exit $result
)sh");
    const int status = std::system(("bash " + folder.Path("smoke.sh") + " " TAVIN_PROGRAM).c_str());
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(WorkbenchWithoutDisplay, SaysWhatWorksThere) {
    const Folder folder;
    folder.Write("days.csv", TenDays());
    for (const std::string display : {"", "DISPLAY=:4711 "}) {
        const std::string command = "cd " + folder.Path("") +
                                    "; env -u DISPLAY -u WAYLAND_DISPLAY -u "
                                    "QT_QPA_PLATFORM " +
                                    display + TAVIN_PROGRAM " days.csv 2>err";
        const int status = std::system(command.c_str());
        EXPECT_EQ(WEXITSTATUS(status), 1);
        for (const char* word : {"display", "tavin clean", "tavin plot", "tavin info"})
            EXPECT_NE(folder.Read("err").find(word), std::string::npos) << word;
    }
}

}  // namespace
}  // namespace app
