#pragma once

#include <ApplicationServices/ApplicationServices.h>
#include <Carbon/Files.h>
#include <Carbon/Folders.h>
#include <Carbon/Gestalt.h>
#include <Carbon/Icons.h>
#include <Carbon/MacErrors.h>
#include <Carbon/Multiprocessing.h>
#include <Carbon/Quickdraw.h>
#include <CoreFoundation/CoreFoundation.h>
