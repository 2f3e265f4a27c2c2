// The show's own main, in a program that is linked with --wrap=main.
#pragma once

extern "C" {

int __real_main(int argumentCount, char** arguments); // the linker gives it this name
}
