' A tour of NSImageZNT: what an image is, scaling, fading, writing and reading back.
'
'   rbhost run examples/tour.bas [IMAGE [FOLDER]]
'
' Leaves the pictures and a sheet of them, index.html, in FOLDER (default: out).

Dim source As String = "examples/photo.jpg"
Dim folderName As String = "out"
If UBound(Arguments) >= 0 Then source = Arguments(0)
If UBound(Arguments) >= 1 Then folderName = Arguments(1)

Dim folder As FolderItem = GetFolderItem(folderName)
If Not folder.Exists Then folder.CreateAsFolder
Dim sheet As String

Dim photo As NSImageZNT = NSImageZNT.imageWithContentsOfFile(GetFolderItem(source))
If photo Is Nil Then
  StdErr.WriteLine source + " is no image that can be read."
  Quit 1
End If

' --- What it is ---

Print source
Print "  size: " + Str(photo.width) + " x " + Str(photo.height) + " points"
Print "  representations: " + Str(photo.RepresentationsCount)
For i As Integer = 0 To photo.RepresentationsCount - 1
  Print "    " + Str(photo.RepresentationWidth(i)) + " x " + Str(photo.RepresentationHeight(i)) + " pixels"
Next
For Each rep As NSImageRepZNT In photo.representations
  Print "    " + Str(rep.bitsPerSample) + " bits a sample, " + rep.colorSpaceName + ", alpha: " + Str(rep.hasAlpha)
Next
Print "  resolution: " + Format(72 * photo.RepresentationWidth(0) / photo.width, "0.#") + " dpi"

' --- Scaling and fading ---

' From here on one pixel is one point.
photo.setSize(photo.RepresentationWidth(0), photo.RepresentationHeight(0))

Dim fitted As NSImageZNT = photo.imageByScalingToSize(480, 480)
Dim squeezed As NSImageZNT = photo.imageByScalingToSize(480, 240, 1.0, False, False)
Dim turned As NSImageZNT = photo.imageByScalingToSize(480, 480, 1.0, True, True)
Dim thumbnail As NSImageZNT = photo.imageByScalingToSize(120, 120)
Dim faded As NSImageZNT = fitted.imageByFadingToFraction(0.4)

Print "Scaled to fit 480 x 480: " + SizeOf(fitted)
Print "Squeezed to 480 x 240: " + SizeOf(squeezed)

Keep("fitted.png", "Scaled in proportion", fitted, fitted.PNGRepresentation)
Keep("squeezed.png", "Squeezed", squeezed, squeezed.PNGRepresentation)
Keep("flipped.png", "Drawn into a flipped image", turned, turned.PNGRepresentation)
Keep("thumbnail.png", "Thumbnail", thumbnail, thumbnail.PNGRepresentation)
Keep("faded.png", "Faded to 40 % (the squares are the page)", faded, faded.PNGRepresentation)

' --- Encoding ---

Const TIFFNone = 1
Const TIFFLZW = 5
Const TIFFPackBits = 32773

For Each quality As Integer In Array(20, 60, 95)
  Keep("quality-" + Str(quality) + ".jpg", "JPEG, quality " + Str(quality), fitted, _
    fitted.JPEGRepresentationWithCompressionFactor(quality / 100))
Next
Keep("faded.jpg", "Faded, as JPEG: over white", faded, faded.JPEGRepresentation)
Keep("none.tiff", "TIFF", fitted, fitted.TIFFRepresentationUsingCompression(TIFFNone, 0))
Keep("lzw.tiff", "TIFF, LZW", fitted, fitted.TIFFRepresentationUsingCompression(TIFFLZW, 0))
Keep("packbits.tiff", "TIFF, PackBits", fitted, fitted.TIFFRepresentationUsingCompression(TIFFPackBits, 0))

' --- Errors are host exceptions ---

Try
  Call NSImageZNT.imageWithContentsOfPath("")
Catch e As NilObjectException
  Print "Caught a NilObjectException: " + e.Message
End Try
Try
  Print Str(photo.RepresentationHeight(photo.RepresentationsCount))
Catch e As OutOfBoundsException
  Print "Caught an OutOfBoundsException: " + e.Message
End Try
Dim text As MemoryBlock = "These bytes are no image."
If NSImageZNT.imageWithData(text) Is Nil Then Print "Bytes that are no image give Nil."

WriteSheet
Print "Tour done: open " + folderName + "/index.html"

Function SizeOf(image As NSImageZNT) As String
  Return Str(image.width) + " x " + Str(image.height)
End Function

Function PixelsOf(image As NSImageZNT) As String
  Return Str(image.MaximumPixelWidth) + " x " + Str(image.MaximumPixelHeight)
End Function

' Writes encoded bytes to a file, reads the file back and compares the sizes.
Sub Keep(name As String, title As String, image As NSImageZNT, data As MemoryBlock)
  Dim file As FolderItem = folder.Child(name)
  file.WriteAll(data)
  Dim back As NSImageZNT = NSImageZNT.imageWithContentsOfFile(file)
  Dim verdict As String = "" + PixelsOf(image) + " pixels, the same when read back"
  If back Is Nil Then
    verdict = "CANNOT BE READ BACK"
  ElseIf PixelsOf(back) <> PixelsOf(image) Then
    verdict = "READ BACK AS " + PixelsOf(back)
  End If
  Print "  " + name + ": " + Str(data.Size) + " bytes, " + verdict

  ' Browsers do not show TIFF, so the sheet shows those converted.
  Dim shown As String = name
  If Right(name, 5) = ".tiff" And Not (back Is Nil) Then
    shown = name + ".png"
    folder.Child(shown).WriteAll(back.PNGRepresentation)
  End If
  sheet = sheet + "<figure><img src=""" + shown + """ alt=""" + title + """><figcaption>" + title _
    + "<br><small>" + name + ", " + Format(data.Size / 1024, "#,##0") + " KB</small></figcaption></figure>" + Chr(10)
End Sub

Sub WriteSheet()
  Dim page As MemoryBlock = "<!DOCTYPE html><html lang=""en""><meta charset=""utf-8""><title>NSImageZNT</title><style>" _
    + "body{font:15px sans-serif;margin:24px;background:conic-gradient(#eee 25%,#fff 0 50%,#eee 0 75%,#fff 0) 0 0/24px 24px}" _
    + "figure{display:inline-block;margin:12px;vertical-align:top}img{max-width:480px;display:block}" _
    + "figcaption{padding:6px 0;color:#333}</style><h1>" + source + "</h1>" + Chr(10) + sheet + "</html>" + Chr(10)
  folder.Child("index.html").WriteAll(page)
End Sub
