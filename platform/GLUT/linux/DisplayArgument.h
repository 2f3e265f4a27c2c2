// The X server that the command line names.
#pragma once

/// The value of the last -display, which is the one that glutInit takes; null if there is none, or
/// it is empty, which stands for the environment's. @p arguments: the program's own name first.
const char* DisplayArgument(int count, char** arguments);
