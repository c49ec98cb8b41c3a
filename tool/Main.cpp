#include "platform/KvPlatform.h"
#include "tool/GameFileCreator.h"

int main(int argc, char** argv)
{
    KvPlatformIgnoreBrokenPipes();  // the list of movables may go to a reader that leaves early
    return RunGameFileCreator(argc, argv);
}
