#include "plugin/bridge/urls.h"
#include "plugin/bridge/strings.h"
#include "plugin/entry/frames.h"
#include "sdk/tables.h"
#include "tests/plugin/probe/probe.h"

using namespace REALtables;

namespace {

/// The URL's string, or nothing.
REALstringStruct* of_item(REALfolderItemStruct* item) {
    return FullFrame(
        [&] { return CFString2RBString((CFStringRef)[NewNSURLfile(item) absoluteString]); });
}

REALfolderItemStruct* item_of(REALstringStruct* url) {
    return FullFrame([&] { return NSURLRBFile(NewNSURL(url)); });
}

REALmethod sharedMethods[] = {
    shared_method("OfItem(item as FolderItem) as String", of_item),
    shared_method("ItemOf(url as String) as FolderItem", item_of),
};

} // namespace

REALclassDefinition URLProbe =
    class_definition({.name = "URLProbe", .sharedMethods = sharedMethods});
