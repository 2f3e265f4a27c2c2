// Modal alert boxes. All texts are Mac Roman. Main thread only; each call blocks until the viewer
// answers, and returns at once where no box can be shown.
#pragma once

#include <string>

namespace engine {

/// A notice with one OK button: @p title in bold, @p message below it.
void logMessageBox(const std::string& title, const std::string& message);

/// A question answered by "Yes" (the default) or "No": true for "Yes" only.
bool logQuestionBox(const std::string& title, const std::string& question);

} // namespace engine
