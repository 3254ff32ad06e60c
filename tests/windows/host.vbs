' A host written in a script: creates the component by its name, gives it a session and shows the register.
' Argument: the company's database. Ends with 42 when all went well, with the number of the line of checks that failed
' otherwise.
Option Explicit

Const GoodsRequestToShop = 1507
Const ProjectKey = "KOVA/XB/TRAM/842"

Sub Check(holds, number)
    If Not holds Then WScript.Quit number
End Sub

Dim connection, request
Set connection = CreateObject("ADODB.Connection")
connection.Open "Data Source=" & WScript.Arguments(0)

Set request = CreateObject("goodsreq.clsGRtoShop")

' What is no connection is refused, and the field keeps nothing of it.
On Error Resume Next
Set request.adocon = CreateObject("Scripting.Dictionary")
Check Err.Number = 13, 101
Err.Clear
request.adocon = "Data Source=elsewhere"
Check Err.Number = 13, 102
Err.Clear
request.intShopid = 40000
Check Err.Number = 6, 103
Err.Clear
On Error GoTo 0
Check request.adocon Is Nothing, 104

Set request.adocon = connection
request.strProjectKey = ProjectKey
request.strMsgboxCaption = "Retail Back Office"
request.intCompanyID = 1
request.intUserID = 1
request.intShopid = 1
request.interfaceid = GoodsRequestToShop
request.dtProcessDate = DateSerial(2026, 3, 31)

Check request.adocon Is connection, 105
Check request.strProjectKey = ProjectKey, 106
Check request.strMsgboxCaption = "Retail Back Office", 107
Check request.intCompanyID = 1 And request.intUserID = 1 And request.intShopid = 1, 108
Check request.interfaceid = GoodsRequestToShop, 109
Check request.dtProcessDate = DateSerial(2026, 3, 31), 110

request.Show

' The module leaves the host's connection open.
Check connection.State = 1, 111
WScript.Quit 42
