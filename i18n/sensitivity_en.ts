<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>WinDlgEnsureKlmP</name>
    <message>
        <source>灵敏度参量确认</source>
        <translation>Confirm Sensitivity Parameters</translation>
    </message>
    <message>
        <source>保护位置</source>
        <translation>Location</translation>
    </message>
    <message>
        <source>保护类型:</source>
        <translation>Relay type:</translation>
    </message>
    <message>
        <source>灵敏度校验用参量</source>
        <translation>Parameters for the Sensitivity Check</translation>
    </message>
    <message>
        <source>参量描述</source>
        <translation>Parameter</translation>
    </message>
    <message>
        <source>新参量值</source>
        <translation>New value</translation>
    </message>
    <message>
        <source>原参量值</source>
        <translation>Old value</translation>
    </message>
    <message>
        <source>故障计算结果浏览</source>
        <translation>Browse Fault Results</translation>
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
        <source>不能保存参量，原因见信息窗口</source>
        <translation>The parameters cannot be stored, see the messages</translation>
    </message>
    <message>
        <source>有参量没有算出值，其灵敏度没有结果</source>
        <translation>A parameter has no computed value; its sensitivity has no result</translation>
    </message>
    <message>
        <source>该参量没有算出值</source>
        <translation>No value was computed for this parameter</translation>
    </message>
    <message>
        <source>参量应为大于零的数值</source>
        <translation>The parameter has to be a number above zero</translation>
    </message>
    <message>
        <source>没有存储这一参量，不能确认</source>
        <translation>This parameter is not stored and cannot be confirmed</translation>
    </message>
    <message>
        <source>参量类型错误或数值小于等于零</source>
        <translation>A parameter is not a number or not above zero</translation>
    </message>
</context>
</TS>
