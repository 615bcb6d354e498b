// Clients that do not behave, or that ask for much. Each story throws when the server does not cope.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

class LoadClient;

std::string Functions(int count); // function0 to the last, a line each
nlohmann::json SymbolsOf(LoadClient& client, const std::string& uri);

// Each does an amount of work that follows from this number of changes.
void FloodOfChanges(int changes);
void FloodOfFiles(int changes);
void FloodOfConfigurations(int changes);
void ManyTexts(int changes);
void LogThatNobodyReads(int changes);
void ClientThatPauses(int changes);
void ClientThatNeverReads(int changes);
void ClientThatStopsWithinAMessage(int changes);
void ClientThatIsKilled(int changes);
