#include "Commands.h"

#include "DumpCommand.h"

std::vector<std::unique_ptr<Command>> allCommands()
{
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<DumpCommand>());
    return commands;
}
