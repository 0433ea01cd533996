#include "Commands.h"

#include "AddCommand.h"
#include "BackupCommand.h"
#include "DeleteCommand.h"
#include "DueCommand.h"
#include "DumpCommand.h"
#include "EditCommand.h"
#include "ExportCommand.h"
#include "FullBackupCommand.h"
#include "ImportAppCommand.h"
#include "ImportCommand.h"
#include "InsertCommand.h"
#include "LocationsCommand.h"
#include "LogCommand.h"
#include "MapCommand.h"
#include "ProfileCommand.h"
#include "ReportCommand.h"
#include "StatsCommand.h"
#include "StatusCommand.h"
#include "VehicleCommand.h"
#include "VehiclesCommand.h"

std::vector<std::unique_ptr<Command>> allCommands()
{
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<VehiclesCommand>());
    commands.push_back(std::make_unique<ProfileCommand>());
    commands.push_back(std::make_unique<LogCommand>());
    commands.push_back(std::make_unique<DumpCommand>());
    commands.push_back(std::make_unique<StatusCommand>());
    commands.push_back(std::make_unique<DueCommand>());
    commands.push_back(std::make_unique<ReconcileCommand>());
    commands.push_back(std::make_unique<BackupCommand>());
    commands.push_back(std::make_unique<RestoreCommand>());
    commands.push_back(std::make_unique<AddCommand>());
    commands.push_back(std::make_unique<LocationsCommand>());
    commands.push_back(std::make_unique<FullBackupCommand>());
    commands.push_back(std::make_unique<FullRestoreCommand>());
    commands.push_back(std::make_unique<VehicleCommand>());
    commands.push_back(std::make_unique<StatsCommand>());
    commands.push_back(std::make_unique<InsertCommand>());
    commands.push_back(std::make_unique<EditCommand>());
    commands.push_back(std::make_unique<DeleteCommand>());
    commands.push_back(std::make_unique<DeleteAllCommand>());
    commands.push_back(std::make_unique<ExportCommand>());
    commands.push_back(std::make_unique<ImportCommand>());
    commands.push_back(std::make_unique<MapCommand>());
    commands.push_back(std::make_unique<ReportCommand>());
    commands.push_back(std::make_unique<ImportAppCommand>());
    return commands;
}
