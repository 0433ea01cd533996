#pragma once

#include <memory>
#include <vector>

#include "Command.h"

// Every command of tarvane-cli, in the order the help lists them.
std::vector<std::unique_ptr<Command>> allCommands();
