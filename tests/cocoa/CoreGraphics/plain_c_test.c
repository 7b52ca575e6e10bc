/* The headers are C: that this file compiles is the test. */

#include <ApplicationServices/ApplicationServices.h>

CGFloat areaOfUnitSquare(void);

CGFloat areaOfUnitSquare(void) {
    const CGRect square = CGRectMake(0, 0, 1, 1);
    return CGRectGetWidth(square) * CGRectGetHeight(square);
}
