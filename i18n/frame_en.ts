<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>CBaseDialog</name>
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
    <name>EditSession</name>
    <message>
        <source>保护装设</source>
        <translation>Relay installation</translation>
    </message>
    <message>
        <source>批量装设保护</source>
        <translation>Batch installation of relays</translation>
    </message>
    <message>
        <source>数据浏览</source>
        <translation>Data browser</translation>
    </message>
    <message>
        <source>动作元件设置</source>
        <translation>Action elements</translation>
    </message>
    <message>
        <source>保护装置设置</source>
        <translation>Protection device</translation>
    </message>
    <message>
        <source>保护设备类型定义</source>
        <translation>Types of protection devices</translation>
    </message>
    <message>
        <source>设置被配合保护</source>
        <translation>Coordinated relays</translation>
    </message>
    <message>
        <source>保护显示配置</source>
        <translation>Display of relays</translation>
    </message>
    <message>
        <source>定值名定义</source>
        <translation>Names of settings</translation>
    </message>
    <message>
        <source>参数组选择</source>
        <translation>Parameter groups</translation>
    </message>
    <message>
        <source>整定原则设定</source>
        <translation>Setting rules</translation>
    </message>
    <message>
        <source>保护整定故障设定</source>
        <translation>Faults of the relay setting</translation>
    </message>
    <message>
        <source>灵敏度参量故障设定</source>
        <translation>Faults of the sensitivity parameters</translation>
    </message>
    <message>
        <source>分支系数故障设置</source>
        <translation>Faults of the branch coefficients</translation>
    </message>
    <message>
        <source>运行方式定义</source>
        <translation>Operating modes</translation>
    </message>
    <message>
        <source>分支系数计算信息</source>
        <translation>Branch coefficients of the calculation</translation>
    </message>
    <message>
        <source>轮检元件设置</source>
        <translation>Elements switched out in turn</translation>
    </message>
    <message>
        <source>灵敏度参量确认</source>
        <translation>Confirmation of the sensitivity parameters</translation>
    </message>
    <message>
        <source>整定计算主界面</source>
        <translation>Setting calculation</translation>
    </message>
    <message>
        <source>计算窗口</source>
        <translation>Calculation window</translation>
    </message>
    <message>
        <source>“%1”于 %2 打开，既未确认也未取消（表：%3）</source>
        <translation>“%1” was opened at %2 and neither confirmed nor cancelled (tables: %3)</translation>
    </message>
</context>
<context>
    <name>RecordButtons</name>
    <message>
        <source>查找记录 Ctrl+F</source>
        <translation>Find a record Ctrl+F</translation>
    </message>
    <message>
        <source>记录排序</source>
        <translation>Sort the records</translation>
    </message>
    <message>
        <source>窗口设置 Ctrl+W</source>
        <translation>Window settings Ctrl+W</translation>
    </message>
    <message>
        <source>记录过滤</source>
        <translation>Filter the records</translation>
    </message>
    <message>
        <source>显示设置 Ctrl+S</source>
        <translation>Display settings Ctrl+S</translation>
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
        <source>，</source>
        <translation>, </translation>
    </message>
    <message>
        <source>不能恢复打开窗口前的数据，数据库中的数据未改变</source>
        <translation>The data cannot be taken back to what they were when the window opened; the database is unchanged</translation>
    </message>
</context>
<context>
    <name>WinDLgSearch</name>
    <message>
        <source>运行方式名</source>
        <translation>Operating mode</translation>
    </message>
    <message>
        <source>保护安装位置</source>
        <translation>Relay location</translation>
    </message>
    <message>
        <source>应用的计算</source>
        <translation>Calculation applied to</translation>
    </message>
    <message>
        <source>主干支路</source>
        <translation>Main branch</translation>
    </message>
    <message>
        <source>作业名</source>
        <translation>Case</translation>
    </message>
    <message>
        <source>保护</source>
        <translation>Relay</translation>
    </message>
    <message>
        <source>查找</source>
        <translation>Find</translation>
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
        <source>记录查找</source>
        <translation>Find a record</translation>
    </message>
</context>
</TS>
