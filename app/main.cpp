#include "app/batch/CommandLine.h"

int main(int argc, char** argv) { return app::Main(argc, argv); }
