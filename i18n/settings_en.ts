<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>SettingModel</name>
    <message>
        <source>与原定值相差超过 %1%</source>
        <translation>Differs from the stored value by more than %1%</translation>
    </message>
    <message>
        <source>一</source>
        <translation>1</translation>
    </message>
    <message>
        <source>二</source>
        <translation>2</translation>
    </message>
    <message>
        <source>三</source>
        <translation>3</translation>
    </message>
    <message>
        <source>四</source>
        <translation>4</translation>
    </message>
    <message>
        <source>五</source>
        <translation>5</translation>
    </message>
    <message>
        <source>保护安装位置</source>
        <translation>Relay location</translation>
    </message>
    <message>
        <source>定值名称</source>
        <translation>Setting</translation>
    </message>
    <message>
        <source>%1段新定值</source>
        <translation>Part %1 new</translation>
    </message>
    <message>
        <source>%1段定值</source>
        <translation>Part %1</translation>
    </message>
    <message>
        <source>%1段原定值</source>
        <translation>Part %1 stored</translation>
    </message>
    <message>
        <source>单位</source>
        <translation>Unit</translation>
    </message>
    <message>
        <source>%1段变化</source>
        <translation>Part %1 change</translation>
    </message>
</context>
</TS>
