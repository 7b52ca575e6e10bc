#pragma once

/// The classes that the host implements itself, each defined in a file of its own.

#include "host/objects/runtime.h"

namespace host {

void defineVariant(Class& variant);
void defineExceptions(Runtime& runtime);
void defineMemoryBlock(Runtime& runtime);
void defineFolderItem(Runtime& runtime);
void defineDate(Runtime& runtime);
void defineDictionary(Runtime& runtime);
void definePicture(Runtime& runtime);
/// Graphics and RGBSurface.
void defineGraphics(Runtime& runtime);
/// The classes Thread and Delegate.
void defineThread(Runtime& runtime);
/// Application on the desktop, ConsoleApplication in a console.
void defineApplication(Runtime& runtime);
const Class& applicationClass(const Runtime& runtime);
/// The functions of no class that plug-ins load.
void defineFunctions(Runtime& runtime);

/// Defines a class of the host's own. The superclass must exist.
Class& defineClass(Runtime& runtime, std::string_view name, std::string_view superclass = "Object");

} // namespace host
