// Compiled with nothing but the precompiled header of the tests.
