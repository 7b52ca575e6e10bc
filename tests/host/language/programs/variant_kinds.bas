Dim int32 As Int32 = -5
Dim int64 As Int64 = 9223372036854775807
Dim single As Single = 0.5
Dim amount As Currency = 12.3456
Dim v As Variant = int32
Print VarType(v) & " " & v.Type & " " & v
v = int64
Print VarType(v) & " " & v.Int64Value & " " & v.LongValue
v = single
Print VarType(v) & " " & v.SingleValue
v = 1.25
Print VarType(v) & " " & v.DoubleValue & " " & v.Int32Value
v = amount
Print VarType(v) & " " & v.CurrencyValue & " " & v
v = "17 apples"
Print VarType(v) & " " & v.StringValue & " " & v.Int32Value
v = New MemoryBlock(3)
Print VarType(v) & " " & MemoryBlock(v.ObjectValue).Size
v = True
Print VarType(v) & " " & v.BooleanValue & " " & v.Int32Value
v = &c010203
Print VarType(v) & " " & v.Int32Value
Dim colour As Color = v
Print colour = v.ColorValue
v = Nil
Print VarType(v) & " " & v.Type & " " & v.IsNull & " " & v.Int32Value & " [" & v.StringValue & "]"
v = "x"
Print v.IsNull Or v.IsNumeric Or v.IsArray

Dim int32s() As Int32
Dim int64s() As Int64
Dim singles() As Single
Dim doubles() As Double
Dim amounts() As Currency
Dim texts() As String
Dim objects() As MemoryBlock
Dim flags() As Boolean
Dim colours() As Color
Print Kind(int32s) & Kind(int64s) & Kind(singles) & Kind(doubles) & Kind(amounts)
Print Kind(texts) & Kind(objects) & Kind(flags) & Kind(colours)
v = int32s
Print v.IsArray
int32s.Append(7)
Dim again() As Int32 = v
Print again(0)
Print Str(v.Type) & " " & CStr(amount) & " " & Val("2.5")

Function Kind(value As Variant) As String
  Return Hex(VarType(value)) + " "
End Function
