// What the default notices do on this system when the host installed no
// handler of its own (texts in code page 1252).
#pragma once

#include <cstdint>
#include <string_view>

namespace vdx::systeme {

void MontreBoite(std::string_view texte, std::string_view titre, int32_t style);
bool AgentPresent(std::string_view nom);
// Silent on every failure, and when there is no agent.
void NotifieAgent(std::string_view nom, std::string_view texte);

}  // namespace vdx::systeme
