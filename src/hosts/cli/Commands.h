// The commands of the tool. Each function adds one of them, with its options and its help.
#pragma once

#include "hosts/cli/Options.h"

namespace vrn::cli {

void addShow(CLI::App& tool, Session& session);
void addCheck(CLI::App& tool, Session& session);
void addDiff(CLI::App& tool, Session& session);
void addCatalogue(CLI::App& tool, Session& session);
void addVerify(CLI::App& tool, Session& session);
void addSign(CLI::App& tool, Session& session);
void addUpdate(CLI::App& tool, Session& session);
void addConvert(CLI::App& tool, Session& session);
void addEdit(CLI::App& tool, Session& session);
void addSchema(CLI::App& tool, Session& session);
void addCompletion(CLI::App& tool, Session& session);
void addMan(CLI::App& tool, Session& session);
void addHost(CLI::App& tool, Session& session);
void addKey(CLI::App& tool, Session& session);

}  // namespace vrn::cli
