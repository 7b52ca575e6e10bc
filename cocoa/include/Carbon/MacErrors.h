#pragma once

/// The result codes of this slice of Carbon.

enum {
    noErr = 0,
    ioErr = -36,
    bdNamErr = -37,
    fnfErr = -43,
    paramErr = -50,
    memFullErr = -108,
    dirNFErr = -120,
    afpAccessDenied = -5000,
    errFSBadFSRef = -1401,
    errFSNameTooLong = -1410,
    errFSRefsDifferent = -1420,
    pathTooLongErr = -2110,
    invalidIconRefErr = -2580,
    noSuchIconErr = -2581,
    gestaltUndefSelectorErr = -5551
};
