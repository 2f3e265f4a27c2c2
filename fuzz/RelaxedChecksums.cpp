// libpng as the fuzzer wants it: the linker leads png_create_read_struct here (--wrap).
#include <png.h>

extern "C" png_structp __real_png_create_read_struct(const char* version, void* context,
                                                     png_error_ptr error, png_error_ptr warning);

extern "C" png_structp __wrap_png_create_read_struct(const char* version, void* context,
                                                     png_error_ptr error, png_error_ptr warning);

extern "C" png_structp __wrap_png_create_read_struct(const char* version, void* context,
                                                     png_error_ptr error, png_error_ptr warning) {
    png_structp png = __real_png_create_read_struct(version, context, error, warning);
    if (png != nullptr) {
        png_set_crc_action(png, PNG_CRC_QUIET_USE, PNG_CRC_QUIET_USE);
        png_set_option(png, PNG_IGNORE_ADLER32, PNG_OPTION_ON);
    }
    return png;
}
