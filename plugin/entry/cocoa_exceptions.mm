#include "plugin/entry/base_part.h"
#include "plugin/entry/exceptions.h"
#include "plugin/entry/references.h"

void RaiseNSExceptionZNT(NSException* exception) {
    NSLog(@"A %@: %@, Info: %@\n", [exception name], [exception reason], [exception userInfo]);
    const HostObject raised = HostObject::adopt([NSException NewNSExceptionZNT:exception]);
    if (raised) REALRaiseException(raised.get());
}
