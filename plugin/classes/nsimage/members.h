#pragma once

/// The functions of the class NSImageZNT, as its table in class.mm names them. `image` is the host
/// object; what each does for nil and on failure is told where it is implemented.

#include "sdk/types.h"

namespace nsimage {

// lifecycle.mm
void NSImageConstructor(REALobjectStruct* image);
void NSImageDestructor(REALobjectStruct* image);
void construct_empty(REALobjectStruct* image);
void construct_with_data(REALobjectStruct* image, REALmemoryBlockStruct* data);
void construct_with_size(REALobjectStruct* image, double width, double height);
void construct_with_file(REALobjectStruct* image, REALfolderItemStruct* file);
void construct_with_picture(REALobjectStruct* image, REALpictureStruct* picture,
                            REALpictureStruct* mask);
bool initWithContentsOfFile(REALobjectStruct* image, REALfolderItemStruct* file);
bool initWithContentsOfURL(REALobjectStruct* image, REALstringStruct* url);
bool initWithData(REALobjectStruct* image, REALmemoryBlockStruct* data);
bool initWithDataIgnoringOrientation(REALobjectStruct* image, REALmemoryBlockStruct* data);
bool initWithSize(REALobjectStruct* image, double width, double height);
bool initWithPasteboard(REALobjectStruct* image);
bool initWithIconRef(REALobjectStruct* image, REALword icon);
bool initWithPicture(REALobjectStruct* image, REALpictureStruct* picture, REALpictureStruct* mask);

// pictures.mm
REALpictureStruct* CopyPictureRect(REALobjectStruct* image, REALword x, REALword y, REALword w,
                                   REALword h, REALobjectStruct* colorSpace);
REALpictureStruct* CopyPicture(REALobjectStruct* image, REALobjectStruct* colorSpace);
REALpictureStruct* CopyMask(REALobjectStruct* image);
REALpictureStruct* CopyPictureWithMask(REALobjectStruct* image, REALobjectStruct* colorSpace);
bool DrawIntoCGContextAtPoint(REALobjectStruct* image, REALword context, double x, double y,
                              double sx, double sy, double sourceWidth, double sourceHeight,
                              REALword operation, double fraction);
bool DrawIntoCGContextAtRect(REALobjectStruct* image, REALword context, double x, double y,
                             double w, double h, double sourceX, double sourceY,
                             double sourceWidth, double sourceHeight, REALword operation,
                             double fraction);

// factories.mm
REALobjectStruct* imageWithDataOfString(REALstringStruct* data);
REALobjectStruct* imageWithDataOfBlock(REALmemoryBlockStruct* data);
REALobjectStruct* imageWithContentsOfFile(REALfolderItemStruct* file);
REALobjectStruct* imageWithContentsOfPath(REALstringStruct* path);
REALobjectStruct* imageWithContentsOfURL(REALstringStruct* url);
REALobjectStruct* imageWithDataOfStringMT(REALstringStruct* data);
REALobjectStruct* imageWithDataOfBlockMT(REALmemoryBlockStruct* data);
REALobjectStruct* imageWithContentsOfFileMT(REALfolderItemStruct* file);
REALobjectStruct* imageWithContentsOfPathMT(REALstringStruct* path);
REALobjectStruct* imageWithContentsOfURLMT(REALstringStruct* url);
REALobjectStruct* imageWithCGImage(REALobjectStruct* cgImage, double width, double height);
REALobjectStruct* imageNamed(REALstringStruct* name);

// types.mm
bool canInitWithPasteboard();
REALarrayStruct* imageUnfilteredFileTypes();
REALarrayStruct* imageUnfilteredPasteboardTypes();
REALarrayStruct* imageFileTypes();
REALarrayStruct* imagePasteboardTypes();
REALarrayStruct* imageTypes();
REALarrayStruct* imageUnfilteredTypes();

// properties.mm
REALobjectStruct* size(REALobjectStruct* image, REALword);
void setSize(REALobjectStruct* image, REALword, REALobjectStruct* size);
void setSizeOfNumbers(REALobjectStruct* image, double width, double height);
double width(REALobjectStruct* image, REALword);
double height(REALobjectStruct* image, REALword);
bool setName(REALobjectStruct* image, REALstringStruct* name);
REALobjectStruct* backgroundColor(REALobjectStruct* image, REALword);
void setBackgroundColor(REALobjectStruct* image, REALword, REALobjectStruct* color);

// representations.mm
void addRepresentation(REALobjectStruct* image, REALobjectStruct* representation);
void removeRepresentation(REALobjectStruct* image, REALobjectStruct* representation);
REALword RepresentationWidth(REALobjectStruct* image, REALword index);
REALword RepresentationHeight(REALobjectStruct* image, REALword index);
REALarrayStruct* representations(REALobjectStruct* image);

// results.mm
REALobjectStruct* imageByScalingToSize(REALobjectStruct* image, double width, double height);
REALobjectStruct* imageByScalingToSizeWithFraction(REALobjectStruct* image, double width,
                                                   double height, double fraction);
REALobjectStruct* imageByScalingToSizeInFull(REALobjectStruct* image, double width, double height,
                                             double fraction, bool flip, bool proportionally);
REALobjectStruct* imageByFadingToFraction(REALobjectStruct* image, double fraction);
REALmemoryBlockStruct* GIFRepresentation(REALobjectStruct* image);
REALmemoryBlockStruct* BMPRepresentation(REALobjectStruct* image);
REALmemoryBlockStruct* PNGRepresentation(REALobjectStruct* image);
REALmemoryBlockStruct* JPEGRepresentation(REALobjectStruct* image);
REALmemoryBlockStruct* JPEGRepresentationWithCompressionFactor(REALobjectStruct* image,
                                                               double factor);
REALmemoryBlockStruct* TIFFRepresentation(REALobjectStruct* image);
REALmemoryBlockStruct* TIFFRepresentationUsingCompression(REALobjectStruct* image,
                                                          REALword compression, double factor);
REALmemoryBlockStruct* GIFRepresentationMT(REALobjectStruct* image);
REALmemoryBlockStruct* BMPRepresentationMT(REALobjectStruct* image);
REALmemoryBlockStruct* PNGRepresentationMT(REALobjectStruct* image);
REALmemoryBlockStruct* JPEGRepresentationWithCompressionFactorMT(REALobjectStruct* image,
                                                                 double factor);
REALmemoryBlockStruct* JPEGRepresentationMT(REALobjectStruct* image);
REALmemoryBlockStruct* TIFFRepresentationMT(REALobjectStruct* image);
REALmemoryBlockStruct* TIFFRepresentationUsingCompressionMT(REALobjectStruct* image,
                                                            REALword compression, double factor);

} // namespace nsimage
