' Pictures with masks: a badge is drawn with a mask, made an image, laid over a photo, and brought
' back into a Picture.
'
'   rbhost run examples/masks.bas [IMAGE [FOLDER]]
'
' Leaves badge.png, composed.jpg and side-by-side.png in FOLDER (default: out).

Dim source As String = "examples/photo.jpg"
Dim folderName As String = "out"
If UBound(Arguments) >= 0 Then source = Arguments(0)
If UBound(Arguments) >= 1 Then folderName = Arguments(1)

Dim folder As FolderItem = GetFolderItem(folderName)
If Not folder.Exists Then folder.CreateAsFolder

Dim photo As NSImageZNT = NSImageZNT.imageWithContentsOfPath(source)
If photo Is Nil Then
  StdErr.WriteLine source + " is no image that can be read."
  Quit 1
End If

' --- A badge: a sun over stripes, and its mask, which is black where the badge shows ---

Const side = 240
Dim badge As New Picture(side, side, 32)
Dim g As Graphics = badge.Graphics
For stripe As Integer = 0 To 11
  g.ForeColor = RGB(20, 60 + stripe * 12, 130 + stripe * 10)
  g.FillRect(0, stripe * 20, side, 20)
Next
g.ForeColor = &cFFC83C
g.FillOval(60, 45, 120, 120)
g.ForeColor = &cFFFFFF
For ray As Integer = 0 To 4
  g.DrawLine(120, 105, 20 + ray * 50, 235)
Next

Dim mask As New Picture(side, side, 32)
mask.Graphics.ForeColor = &cFFFFFF
mask.Graphics.FillRect(0, 0, side, side)
' The rim fades out: each step inwards is a little darker.
For rim As Integer = 0 To 15
  Dim shade As Integer = 255 - rim * 17
  mask.Graphics.ForeColor = RGB(shade, shade, shade)
  mask.Graphics.FillOval(rim, rim, side - 2 * rim, side - 2 * rim)
Next

' --- The badge as an image ---

Dim image As New NSImageZNT(badge, mask)
Write("badge.png", image.PNGRepresentation)
Print "The badge is " + Str(image.width) + " x " + Str(image.height) + ", alpha: " + Str(image.representations(0).hasAlpha)

' --- Over the photo ---

Dim small As NSImageZNT = photo.imageByScalingToSize(720, 720)
Dim composed As Picture = small.CopyPicture
Dim back As Picture = image.CopyPictureWithMask
If composed Is Nil Or back Is Nil Then
  StdErr.WriteLine "This host has no bitmap contexts that images can be drawn into."
  Quit 1
End If
For corner As Integer = 0 To 1
  Dim x As Integer = corner * (composed.Width - side)
  Dim y As Integer = corner * (composed.Height - side)
  composed.Graphics.DrawPicture(back, x, y)
Next
Dim whole As New NSImageZNT(composed)
Write("composed.jpg", whole.JPEGRepresentationWithCompressionFactor(0.85))

' --- The Picture as it was drawn, and as it came back ---

Dim both As New Picture(2 * side + 60, side + 40, 32)
both.Graphics.ForeColor = &cE8E4DA
both.Graphics.FillRect(0, 0, both.Width, both.Height)
badge.Mask.Graphics.DrawPicture(mask, 0, 0)
both.Graphics.DrawPicture(badge, 20, 20)
both.Graphics.DrawPicture(back, side + 40, 20)
Dim shown As New NSImageZNT(both)
Write("side-by-side.png", shown.PNGRepresentation)

' Where the rim fades out it comes back darker: an image keeps its colours weighed by their alpha, and
' the mask weighs them once more.
Dim worst As Integer
For y As Integer = 0 To side - 1
  For x As Integer = 0 To side - 1
    Dim drawn As Variant = both.RGBSurface.Pixel(20 + x, 20 + y)
    Dim returned As Variant = both.RGBSurface.Pixel(side + 40 + x, 20 + y)
    worst = Max(worst, Difference(drawn.Int32Value, returned.Int32Value))
  Next
Next
Print "Drawn and brought back, the rim differs by at most " + Str(worst) + " of 255"
Print "Masks done"

Sub Write(name As String, data As MemoryBlock)
  folder.Child(name).WriteAll(data)
  Print "  " + name + ": " + Str(data.Size) + " bytes"
End Sub

' The largest difference of the red, green and blue of two colours.
Function Difference(a As Integer, b As Integer) As Integer
  Dim largest As Integer
  For place As Integer = 0 To 2
    largest = Max(largest, Abs(a Mod 256 - b Mod 256))
    a = a \ 256
    b = b \ 256
  Next
  Return largest
End Function
