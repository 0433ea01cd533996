#include "Commands.h"

#include "AddCommand.h"
#include "BackupCommand.h"
#include "DumpCommand.h"
#include "LogCommand.h"
#include "ProfileCommand.h"
#include "StatsCommand.h"
#include "StatusCommand.h"
#include "VehiclesCommand.h"

std::vector<std::unique_ptr<Command>> allCommands()
{
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<VehiclesCommand>());
    commands.push_back(std::make_unique<ProfileCommand>());
    commands.push_back(std::make_unique<LogCommand>());
    commands.push_back(std::make_unique<DumpCommand>());
    commands.push_back(std::make_unique<StatusCommand>());
    commands.push_back(std::make_unique<ReconcileCommand>());
    commands.push_back(std::make_unique<BackupCommand>());
    commands.push_back(std::make_unique<RestoreCommand>());
    commands.push_back(std::make_unique<AddCommand>());
    commands.push_back(std::make_unique<StatsCommand>());
    return commands;
}
