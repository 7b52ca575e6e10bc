#pragma once

#import <Foundation/Foundation.h>

#include <ApplicationServices/ApplicationServices.h>
#include <CoreFoundation/CoreFoundation.h>

#import <AppKit/AppKit.h>
