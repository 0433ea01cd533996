#include "Commands.h"

#include "AddCommand.h"
#include "DumpCommand.h"

std::vector<std::unique_ptr<Command>> allCommands()
{
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<DumpCommand>());
    commands.push_back(std::make_unique<AddCommand>());
    return commands;
}
