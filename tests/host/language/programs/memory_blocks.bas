Dim m As New MemoryBlock(8)
Print m.Size
m.Byte(0) = 255
m.Long(4) = &h04030201
Print m.Byte(0) & " " & m.Byte(4) & " " & m.Byte(7) & " " & m.Long(4)
m.StringValue(1, 2) = "hi"
Print m.StringValue(1, 2)
Dim t As MemoryBlock = "abc"
Print t.Size
Dim s As String = t
Print s + "!"
Print LenB(t)
Try
  Print m.Byte(8)
Catch e As OutOfBoundsException
  Print "outside"
End Try
Dim p As MemoryBlock
Try
  Print p.Size
Catch e As NilObjectException
  Print e.Message
End Try
Try
  p.Byte(0) = 1
Catch e As NilObjectException
  Print e.Message
End Try
