' A bar chart, drawn into a Picture and saved as PNG and JPEG.
'
'   rbhost run examples/chart.bas [FOLDER [NUMBER...]]
'
' Leaves chart.png and chart.jpg in FOLDER (default: out).

Dim folderName As String = "out"
If UBound(Arguments) >= 0 Then folderName = Arguments(0)
Dim folder As FolderItem = GetFolderItem(folderName)
If Not folder.Exists Then folder.CreateAsFolder

Dim values() As Double
For i As Integer = 1 To UBound(Arguments)
  values.Append(Val(Arguments(i)))
Next
If UBound(values) < 0 Then values = Array(12.0, 19.0, 8.0, 27.0, 31.0, 22.0, 35.0, 29.0)

Dim most As Double
Dim total As Double
For Each value As Double In values
  most = Max(most, value)
  total = total + value
Next
If most <= 0 Then
  StdErr.WriteLine "There is nothing above zero to draw."
  Quit 1
End If

' --- The sheet ---

Const width = 640
Const height = 400
Const margin = 60
Const bottom = 350
Const plotHeight = 300
Dim chart As New Picture(width, height, 32)
Dim g As Graphics = chart.Graphics

' A grid of round steps: 1, 2 or 5 times a power of ten, at most eight of them.
Dim gridStep As Double = 1
Dim isTwo As Boolean
While most / gridStep > 8
  If isTwo Then gridStep = gridStep * 2.5 Else gridStep = gridStep * 2
  isTwo = Left(Str(gridStep), 1) = "2"
Wend
Dim top As Double = Ceil(most / gridStep) * gridStep
Dim plotWidth As Integer = width - margin - 30

Dim mark As Double = 0
While mark <= top
  Dim y As Integer = bottom - Round(mark / top * plotHeight)
  g.ForeColor = &cDCDCDC
  If mark = 0 Then g.ForeColor = &c404040
  g.DrawLine(margin, y, margin + plotWidth, y)
  g.ForeColor = &c606060
  DrawNumber(Str(mark), margin - 10, y - 5)
  mark = mark + gridStep
Wend

' --- The bars, and the mean ---

Dim slot As Double = plotWidth / (UBound(values) + 1)
For i As Integer = 0 To UBound(values)
  Dim barHeight As Integer = Round(Max(values(i), 0) / top * plotHeight)
  Dim x As Integer = margin + Round(i * slot + slot * 0.15)
  Dim barWidth As Integer = Max(Round(slot * 0.7), 1)
  Dim tint As Integer = Round(values(i) / most * 120)
  g.ForeColor = RGB(200 - tint, 110, 90 + Max(tint, 0))
  g.FillRect(x, bottom - barHeight, barWidth, barHeight)
  g.ForeColor = &c303030
  g.DrawRect(x, bottom - barHeight, barWidth, barHeight + 1)
  DrawNumber(Str(values(i)), x + barWidth / 2 + 4 * Len(Str(values(i))), bottom - barHeight - 16)
Next
Dim meanY As Integer = bottom - Round(total / (UBound(values) + 1) / top * plotHeight)
g.ForeColor = &cC02020
For x As Integer = margin To margin + plotWidth Step 8
  g.DrawLine(x, meanY, Min(x + 4, margin + plotWidth), meanY)
Next

' --- Saved ---

Dim image As New NSImageZNT(chart)
folder.Child("chart.png").WriteAll(image.PNGRepresentation)
folder.Child("chart.jpg").WriteAll(image.JPEGRepresentation)
Print "Drawn: " + Str(UBound(values) + 1) + " bars up to " + Str(most) + ", on a scale up to " + Str(top)

' Digits of 3 x 5 dots, twice as large, that end left of x.
Sub DrawNumber(text As String, right As Integer, y As Integer)
  Const digits = "0123456789.-"
  Dim dots() As String = Split("111101101101111 010110010010111 111001111100111 111001111001111 101101111001001 111100111001111 111100111101111 111001001001001 111101111101111 111101111001111 000000000000010 000000111000000", " ")
  For i As Integer = 1 To Len(text)
    Dim shape As String = dots(InStr(digits, Mid(text, i, 1)) - 1)
    For dot As Integer = 0 To 14
      If Mid(shape, dot + 1, 1) = "1" Then g.FillRect(right - 8 * (Len(text) - i + 1) + 2 * (dot Mod 3), y + 2 * (dot \ 3), 2, 2)
    Next
  Next
End Sub
