#include "cocoa/codecs/jpeg_errors.h"

#include <jerror.h>

namespace cocoa::codecs {

namespace {

JpegErrors& errors_of(j_common_ptr common) { return *reinterpret_cast<JpegErrors*>(common->err); }

[[noreturn]] void escape(j_common_ptr common) { std::longjmp(errors_of(common).escape, 1); }

void note(j_common_ptr common, int level) {
    if (level >= 0) return; // a trace, not a warning
    switch (common->err->msg_code) {
    case JWRN_ARITH_BAD_CODE:
    case JWRN_HIT_MARKER:
    case JWRN_HUFF_BAD_CODE:
    case JWRN_JPEG_EOF:
    case JWRN_MUST_RESYNC:
        errors_of(common).invented = true;
        break;
    default: // oddities that leave the pixels whole
        break;
    }
}

void say_nothing(j_common_ptr) {}

} // namespace

jpeg_error_mgr* JpegErrors::handlers() {
    jpeg_std_error(&base);
    base.error_exit = codecs::escape;
    base.emit_message = note;
    base.output_message = say_nothing;
    return &base;
}

} // namespace cocoa::codecs
