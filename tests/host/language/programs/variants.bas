Dim v As Variant = 5
Print v
v = v + 1
Print v
v = "text"
Print v
Print v + "!"
v = 2.5
Dim n As Integer = v
Print n
Dim s As String = v
Print s
v = "12"
n = v
Print n
v = Nil
Print v Is Nil
n = v
Print n
v = New MemoryBlock(3)
Dim m As MemoryBlock = v
Print m.Size
Print v IsA MemoryBlock
Print MemoryBlock(v).Size
v = True
If v Then Print "true"
v = 10
If v > 5 And v <> 11 Then Print "between"
Print v / 4
Print v \ 4
Print -v
v = &cFF8000
Dim c As Color = v
Print c = RGB(255, 128, 0)
Print Show(1) + Show("a") + Show(Nil)
v = 7
Select Case v
Case 1 To 6
  Print "low"
Case 7
  Print "seven"
End Select
Try
  v = New MemoryBlock(1)
  Dim e As RuntimeException = v
Catch error As TypeMismatchException
  Print error.Message
End Try
Dim o As Object = New MemoryBlock(2)
Print o IsA MemoryBlock
Try
  Print FolderItem(o).Name
Catch e As IllegalCastException
  Print e.Message
End Try
Print FolderItem(Nil) Is Nil

Function Show(value As Variant) As String
  If value Is Nil Then Return "[Nil]"
  Return "[" & value & "]"
End Function
