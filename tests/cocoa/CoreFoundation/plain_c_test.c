/* The headers serve C programs too. */

#include <ApplicationServices/ApplicationServices.h>
#include <Carbon/Files.h>
#include <Carbon/Gestalt.h>
#include <Carbon/Icons.h>
#include <Carbon/Multiprocessing.h>
#include <CoreFoundation/CoreFoundation.h>
#include <CoreMedia/CMTimeRange.h>
#include <QTKit/QTTimeRange.h>

int lengthOfAConstantInC(void);

int lengthOfAConstantInC(void) { return (int)CFStringGetLength(CFSTR("four")); }
