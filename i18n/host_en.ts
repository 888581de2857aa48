<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>ElementPicker</name>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>电压等级(kV)</source>
        <translation>Voltage (kV)</translation>
    </message>
    <message>
        <source>厂站</source>
        <translation>Station</translation>
    </message>
    <message>
        <source>节点</source>
        <translation>Node</translation>
    </message>
    <message>
        <source>I侧节点</source>
        <translation>I node</translation>
    </message>
    <message>
        <source>J侧节点</source>
        <translation>J node</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>名称、节点、电压等级或厂站</source>
        <translation>Name, node, voltage or station</translation>
    </message>
    <message>
        <source>共 %1 个，显示 %2 个</source>
        <translation>%2 of %1 shown</translation>
    </message>
</context>
<context>
    <name>RecordButtons</name>
    <message>
        <source>前移一条记录</source>
        <translation>Previous record</translation>
    </message>
    <message>
        <source>后移一条记录</source>
        <translation>Next record</translation>
    </message>
    <message>
        <source>到第一条记录</source>
        <translation>First record</translation>
    </message>
    <message>
        <source>到最后一条记录</source>
        <translation>Last record</translation>
    </message>
    <message>
        <source>增加一条记录</source>
        <translation>Add a record</translation>
    </message>
    <message>
        <source>删除一条记录</source>
        <translation>Delete the record</translation>
    </message>
    <message>
        <source>拷贝当前记录</source>
        <translation>Copy this record</translation>
    </message>
    <message>
        <source>粘贴到当前记录</source>
        <translation>Paste into this record</translation>
    </message>
    <message>
        <source>查找一条记录</source>
        <translation>Find a record</translation>
    </message>
    <message>
        <source>取消本次修改</source>
        <translation>Undo the changes of this record</translation>
    </message>
    <message>
        <source>浏览所有记录</source>
        <translation>Browse all records</translation>
    </message>
    <message>
        <source>输出记录信息</source>
        <translation>Export the records</translation>
    </message>
</context>
<context>
    <name>Text</name>
    <message>
        <source>建立</source>
        <translation>Making table </translation>
    </message>
    <message>
        <source>表失败</source>
        <translation> failed</translation>
    </message>
    <message>
        <source>不能恢复打开窗口前的数据，数据库中的数据未改变</source>
        <translation>The data cannot be taken back to what they were when the window opened; the database is unchanged</translation>
    </message>
</context>
<context>
    <name>WinDlgCalBranchChoose</name>
    <message>
        <source>选择支路</source>
        <translation>Choose a branch</translation>
    </message>
</context>
<context>
    <name>WinDlgCalBusChoose</name>
    <message>
        <source>选择母线</source>
        <translation>Choose a bus</translation>
    </message>
</context>
<context>
    <name>WinDlgCalEleTerm1Choose</name>
    <message>
        <source>选择发电机</source>
        <translation>Choose a generator</translation>
    </message>
    <message>
        <source>选择并联电容器或电抗器</source>
        <translation>Choose a shunt capacitor or reactor</translation>
    </message>
</context>
<context>
    <name>sql_dlg::CDataForm</name>
    <message>
        <source>应为数字</source>
        <translation>a number is expected</translation>
    </message>
    <message>
        <source>%1不能为空</source>
        <translation>%1 must not be empty</translation>
    </message>
    <message>
        <source>%1不能为*NEW_VALUE*</source>
        <translation>%1 must not be *NEW_VALUE*</translation>
    </message>
    <message>
        <source>记录已经存在</source>
        <translation>The record exists already</translation>
    </message>
</context>
<context>
    <name>sql_dlg::CSqlDialog</name>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>sql_dlg::CSqlDialogBtns</name>
    <message>
        <source>输出记录信息</source>
        <translation>Export the records</translation>
    </message>
    <message>
        <source>不能写文件%1：%2</source>
        <translation>Cannot write the file %1: %2</translation>
    </message>
</context>
<context>
    <name>sql_dlg::CSqlLineEditString</name>
    <message>
        <source>该字符不能存储，或文字过长</source>
        <translation>This character cannot be stored, or the text is too long</translation>
    </message>
</context>
<context>
    <name>sql_dlg::RecordList</name>
    <message>
        <source>浏览所有记录</source>
        <translation>Browse all records</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
</TS>
