#include "Drawing.h"

// The commands that draw nothing run here; the others are handed over to backplot-cli-draw.
int main(int argc, char** argv) { return backplot::RunCli(argc, argv, nullptr); }
