' Converts a folder of images to JPEGs of at most 640 x 640 pixels, in several threads.
'
'   rbhost run examples/batch.bas FOLDER [OUT]
'
' Leaves the pictures in OUT (default: out/batch). A file that cannot be converted is named at the
' end, and the others go on; the exit status is then 1.

Const ThreadCount = 4
Const LongestSide = 640

If UBound(Arguments) < 0 Then
  StdErr.WriteLine "Name a folder of images."
  Quit 2
End If
Dim source As FolderItem = GetFolderItem(Arguments(0))
If Not source.Directory Then
  StdErr.WriteLine Arguments(0) + " is no folder."
  Quit 2
End If
Dim target As FolderItem
If UBound(Arguments) >= 1 Then
  target = GetFolderItem(Arguments(1))
Else
  target = GetFolderItem("out").Child("batch")
End If
If Not target.Parent.Exists Then target.Parent.CreateAsFolder
If Not target.Exists Then target.CreateAsFolder

Dim files(), results() As FolderItem
ListFiles

' Each thread takes the next file as long as there is one. Loading and encoding happen on workers
' of the plug-in's, and meanwhile the other threads have their turns: this one shows the progress.
Dim taken, converted As Integer
Dim failures() As String
Dim started As Double = Microseconds
For i As Integer = 1 To ThreadCount
  Dim worker As New Thread(AddressOf ConvertFiles)
  worker.Run
Next
Dim count As Integer = UBound(files) + 1
While converted + UBound(failures) + 1 < count
  ShowProgress
  App.SleepCurrentThread(50)
Wend
ShowProgress
StdErr.WriteLine

Print Str(converted) + " of " + Str(count) + " files converted in " _
  + Format((Microseconds - started) / 1000000, "0.0") + " seconds"
If UBound(failures) >= 0 Then
  failures.Sort
  For Each failure As String In failures
    Print "  " + failure
  Next
  Quit 1
End If

' Two sources of one name, such as a.png and a.tiff, keep their extensions.
Sub ListFiles()
  Dim names As New Dictionary
  For i As Integer = 1 To source.Count
    Dim file As FolderItem = source.Item(i)
    If Not file.Directory Then
      Dim name As String = BaseName(file.Name)
      If names.HasKey(name) Then name = file.Name
      names.Value(name) = True
      files.Append file
      results.Append target.Child(name + ".jpg")
    End If
  Next
End Sub

Function BaseName(name As String) As String
  Dim parts As Integer = CountFields(name, ".")
  If parts < 2 Then Return name
  Dim base As String = Left(name, Len(name) - Len(NthField(name, ".", parts)) - 1)
  If base = "" Then Return name
  Return base
End Function

Sub ConvertFiles()
  While taken <= UBound(files)
    Dim i As Integer = taken
    taken = taken + 1
    Try
      Convert(files(i), results(i))
      converted = converted + 1
    Catch e As RuntimeException
      failures.Append files(i).Name + ": " + e.Message
    End Try
  Wend
End Sub

Sub Convert(file As FolderItem, result As FolderItem)
  Dim image As NSImageZNT = NSImageZNT.imageWithContentsOfFileMT(file)
  If image Is Nil Then Raise New UnsupportedFormatException("is no image that can be read")
  ' From here on one pixel is one point.
  image.setSize(image.MaximumPixelWidth, image.MaximumPixelHeight)
  If Max(image.width, image.height) > LongestSide Then
    image = image.imageByScalingToSize(LongestSide, LongestSide)
  End If
  Dim data As MemoryBlock = image.JPEGRepresentationWithCompressionFactorMT(0.85)
  If data Is Nil Then Raise New UnsupportedFormatException("cannot be written as JPEG")
  result.WriteAll(data)
End Sub

Sub ShowProgress()
  StdErr.Write Chr(13) + Str(converted) + " of " + Str(count) + " converted, " _
    + Str(UBound(failures) + 1) + " failed"
End Sub
