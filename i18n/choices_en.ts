<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>ChoiceDialog</name>
    <message>
        <source>名称的一部分</source>
        <translation>Part of the name</translation>
    </message>
    <message>
        <source>增加</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>全删</source>
        <translation>Remove All</translation>
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
        <source>共 %1 个</source>
        <translation>%1 entries</translation>
    </message>
    <message>
        <source>共 %1 个，显示 %2 个</source>
        <translation>%1 entries, %2 shown</translation>
    </message>
    <message>
        <source>已选 %1 个</source>
        <translation>%1 selected</translation>
    </message>
</context>
<context>
    <name>WinDlgSelectRly</name>
    <message>
        <source>选择保护</source>
        <translation>Select Relays</translation>
    </message>
    <message>
        <source>选择方式</source>
        <translation>Selection by</translation>
    </message>
    <message>
        <source>指定</source>
        <translation>Hand</translation>
    </message>
    <message>
        <source>电压等级</source>
        <translation>Voltage level</translation>
    </message>
    <message>
        <source>全网</source>
        <translation>Entire network</translation>
    </message>
    <message>
        <source>待选择保护</source>
        <translation>Relays to select from</translation>
    </message>
    <message>
        <source>选择的保护</source>
        <translation>Selected relays</translation>
    </message>
    <message>
        <source>安装位置</source>
        <translation>Location</translation>
    </message>
    <message>
        <source>元件名</source>
        <translation>Name of the element</translation>
    </message>
    <message>
        <source>选择</source>
        <translation>Select</translation>
    </message>
    <message>
        <source>选“指定”后可用</source>
        <translation>Available when selecting by hand</translation>
    </message>
    <message>
        <source>选“电压等级”后可用</source>
        <translation>Available when selecting by voltage level</translation>
    </message>
</context>
<context>
    <name>WinDlgselectSYS</name>
    <message>
        <source>选择运行方式</source>
        <translation>Select Operating Modes</translation>
    </message>
    <message>
        <source>待选择运行方式</source>
        <translation>Modes to select from</translation>
    </message>
    <message>
        <source>选择的运行方式</source>
        <translation>Selected modes</translation>
    </message>
</context>
</TS>
