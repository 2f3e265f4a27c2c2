// The effects of the code under test: the services it calls and the text it prints, in one list,
// one line each:
//     glTranslatef(-720, -540, 0)
//     print "BasicInit - Initiated\n"
// Numbers have the fewest digits that identify them among all numbers of their type; enumerators
// are written by name, strings in quotes.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>

namespace doubles {

/// Everything that @p action calls and prints. Text printed between two calls is one line.
std::string EffectsOf(const std::function<void()>& action);

/// The bytes that @p action prints on standard output.
std::string OutputOf(const std::function<void()>& action);

/// For the statement of a death test: runs @p action and, if that ends the process by exit(),
/// writes its effects to standard error.
void ReportEffectsAtExit(const std::function<void()>& action);

/// @p lines as EffectsOf would return them.
std::string Lines(std::initializer_list<std::string> lines);

/// The lines of @p effects that begin with @p prefix.
std::string Only(const std::string& prefix, const std::string& effects);

/// The number of lines of @p effects that begin with @p prefix.
int Count(const std::string& prefix, const std::string& effects);

/// Text that is written into a call unquoted.
struct Word {
    std::string text;
};

std::string Text(bool value);
std::string Text(int value);
std::string Text(unsigned int value);
std::string Text(float value);
std::string Text(double value);
std::string Text(const char* value); ///< quoted, escaped as in a source file; null is null
std::string Text(const std::string& value);
std::string Text(const Word& value);

/// Whether an action is running whose effects are recorded.
bool IsRecording();

/// Adds a line to the effects of the running action, if there is one.
void RecordLine(const std::string& line);

/// For the doubles: adds a call.
template <typename... Arguments>
void Record(const std::string& function, const Arguments&... arguments) {
    if (!IsRecording()) {
        return;
    }
    std::string list;
    ((list += (list.empty() ? "" : ", ") + Text(arguments)), ...);
    RecordLine(function + "(" + list + ")");
}

} // namespace doubles
