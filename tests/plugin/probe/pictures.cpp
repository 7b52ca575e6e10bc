#include "plugin/picture/picture_drawing.h"
#include "plugin/picture/picture_editor.h"
#include "plugin/picture/picture_image.h"
#include "plugin/picture/unlock_pixels.h"
#include "sdk/tables.h"
#include "tests/plugin/probe/probe.h"

#include "plugin/entry/host_services.h"

#include <string>

using namespace REALtables;

namespace {

REALstringStruct* text_of(const std::string& text) {
    return REALBuildString(text.data(), static_cast<std::int32_t>(text.size()));
}

/// What an editor finds, or "none"; it is gone again behind this.
REALstringStruct* edit(REALpictureStruct* picture, bool reading, bool writing) {
    PictureEditor editor;
    if (!editor.GetPictureEditor(picture, reading, writing)) return text_of("none");
    const bool isTaken = editor.picture == picture;
    return text_of("format " + std::to_string(editor.pixelFormat) + ", " +
                   std::to_string(editor.width) + " x " + std::to_string(editor.height) +
                   (editor.alphaLocked ? ", alpha" : "") + (isTaken ? "" : ", a copy"));
}

/// The same of an editor that held `first` before.
bool edit_again(REALpictureStruct* first, REALpictureStruct* second) {
    PictureWriter writer;
    writer.GetPictureEditor(first, 0, 1);
    return writer.GetPictureEditor(second, 0, 1) != 0;
}

/// Gives an editor a pixel map to unlock.
void edit_with_pix_map(REALpictureStruct* picture, REALword pixMap) {
    PictureEditor editor;
    editor.GetPictureEditor(picture, 1, 0);
    editor.pixMap = reinterpret_cast<PixMapHandle>(pixMap);
}

bool own_copy(REALpictureStruct* dest, REALpictureStruct* source, REALword w, REALword h,
              REALword sw, REALword sh) {
    return OwnCopy(dest, source, 0, 0, static_cast<int>(w), static_cast<int>(h), 0, 0,
                   static_cast<int>(sw), static_cast<int>(sh));
}

bool draw(REALpictureStruct* dest, REALpictureStruct* source, REALword w, REALword h) {
    const int width = static_cast<int>(w);
    const int height = static_cast<int>(h);
    return GraphicsDrawPicture(dest, source, 0, 0, width, height, 0, 0, width, height);
}

/// A CGImageRef for the caller; 0 for none.
REALword image_of(REALpictureStruct* picture, REALpictureStruct* mask) {
    return reinterpret_cast<REALword>(CreateCGImageInternal(picture, mask));
}

REALmethod sharedMethods[] = {
    shared_method("Edit(picture as Picture, reading as Boolean, writing as Boolean) as String",
                  edit),
    shared_method("EditAgain(first as Picture, second as Picture) as Boolean", edit_again),
    shared_method("EditWithPixMap(picture as Picture, pixMap as Integer)", edit_with_pix_map),
    shared_method("OwnCopy(dest as Picture, source as Picture, w as Integer, h as Integer, sw as "
                  "Integer, sh as Integer) as Boolean",
                  own_copy),
    shared_method("Draw(dest as Picture, source as Picture, w as Integer, h as Integer) as Boolean",
                  draw),
    shared_method("ImageOf(picture as Picture, mask as Picture) as Integer", image_of),
};

} // namespace

REALclassDefinition PictureProbe =
    class_definition({.name = "PictureProbe", .sharedMethods = sharedMethods});
