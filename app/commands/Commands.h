// All commands of the program. Each is made in its own folder, where its options stand beside its
// sink.
#pragma once

#include "commands/Command.h"

#include <memory>

std::unique_ptr<Command> listCommand();
std::unique_ptr<Command> showCommand();
std::unique_ptr<Command> describeCommand();
std::unique_ptr<Command> statsCommand();
std::unique_ptr<Command> checkCommand();
std::unique_ptr<Command> reportCommand();
std::unique_ptr<Command> positionCommand();
std::unique_ptr<Command> compareCommand();
std::unique_ptr<Command> exportCommand();
std::unique_ptr<Command> convertCommand();
std::unique_ptr<Command> encodeCommand();
std::unique_ptr<Command> serveCommand();

// About the program itself: the completion script for a shell, and the manual page, which the
// installation uses.
std::unique_ptr<Command> completionCommand();
std::unique_ptr<Command> manualCommand();
