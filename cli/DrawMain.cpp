#include "Drawing.h"
#include "DrawCommands.h"

// backplot-cli-draw: every command of backplot-cli, the drawing ones included.
int main(int argc, char** argv)
{
    static const backplot::Drawing drawing{backplot::RunRender, backplot::RunPrint, backplot::WritePng,
                                           backplot::WritePdf, backplot::StartPages};
    return backplot::RunCli(argc, argv, &drawing);
}
