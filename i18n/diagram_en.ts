<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>DiagramView</name>
    <message>
        <source>单线图只能导出为 svg、pdf 或 png 文件：%1</source>
        <translation>The diagram can be exported as an svg, pdf or png file only: %1</translation>
    </message>
    <message>
        <source>单线图是空的，没有可以导出的内容。</source>
        <translation>The diagram is empty; there is nothing to export.</translation>
    </message>
    <message>
        <source>不能写文件 %1：%2</source>
        <translation>Cannot write the file %1: %2</translation>
    </message>
    <message>
        <source>单线图</source>
        <translation>Single-line diagram</translation>
    </message>
    <message>
        <source>正在排布单线图……</source>
        <translation>Laying out the diagram…</translation>
    </message>
    <message>
        <source>网络没有节点，单线图是空的。</source>
        <translation>The network has no nodes; the diagram is empty.</translation>
    </message>
    <message>
        <source>有 %1 个元件所接的节点不存在，没有画出。</source>
        <translation>%1 elements are not drawn, since a node they are connected to does not exist.</translation>
    </message>
    <message>
        <source>断路器</source>
        <translation>Circuit breaker</translation>
    </message>
    <message>
        <source>隔离刀闸</source>
        <translation>Disconnector</translation>
    </message>
    <message>
        <source>双绕组变压器</source>
        <translation>Two-winding transformer</translation>
    </message>
    <message>
        <source>三绕组变压器</source>
        <translation>Three-winding transformer</translation>
    </message>
    <message>
        <source>发电机</source>
        <translation>Generator</translation>
    </message>
    <message>
        <source>电动机</source>
        <translation>Motor</translation>
    </message>
    <message>
        <source>等值电源</source>
        <translation>Feeder</translation>
    </message>
    <message>
        <source>负荷</source>
        <translation>Load</translation>
    </message>
    <message>
        <source>并联电容器</source>
        <translation>Shunt capacitor</translation>
    </message>
    <message>
        <source>并联电抗器</source>
        <translation>Shunt reactor</translation>
    </message>
    <message>
        <source>T接点</source>
        <translation>Tee node</translation>
    </message>
    <message>
        <source>节点</source>
        <translation>Node</translation>
    </message>
    <message>
        <source>线路</source>
        <translation>Line</translation>
    </message>
    <message>
        <source>母线</source>
        <translation>Bus</translation>
    </message>
    <message>
        <source>节点：%1 — %2</source>
        <translation>Nodes: %1 — %2</translation>
    </message>
    <message>
        <source>状态：断开</source>
        <translation>State: open</translation>
    </message>
    <message>
        <source>状态：闭合</source>
        <translation>State: closed</translation>
    </message>
    <message>
        <source>I 侧断开</source>
        <translation>Open at the I end</translation>
    </message>
    <message>
        <source>J 侧断开</source>
        <translation>Open at the J end</translation>
    </message>
    <message>
        <source>停运</source>
        <translation>Out of service</translation>
    </message>
    <message>
        <source>基准电压：%1 kV</source>
        <translation>Base voltage: %1 kV</translation>
    </message>
    <message>
        <source>厂站：%1</source>
        <translation>Station: %1</translation>
    </message>
    <message>
        <source>节点：%1</source>
        <translation>Node: %1</translation>
    </message>
    <message>
        <source>电压：%1</source>
        <translation>Voltage: %1</translation>
    </message>
    <message>
        <source>正序阻抗：%1（标幺值）</source>
        <translation>Positive-sequence impedance: %1 (per unit)</translation>
    </message>
    <message>
        <source>零序阻抗：%1（标幺值）</source>
        <translation>Zero-sequence impedance: %1 (per unit)</translation>
    </message>
    <message>
        <source>长度：%1 km</source>
        <translation>Length: %1 km</translation>
    </message>
    <message>
        <source>额定电流：%1 A</source>
        <translation>Rated current: %1 A</translation>
    </message>
    <message>
        <source>最大负荷电流：%1 A</source>
        <translation>Largest load current: %1 A</translation>
    </message>
    <message>
        <source>三角形</source>
        <translation>delta</translation>
    </message>
    <message>
        <source>星形接地</source>
        <translation>grounded star</translation>
    </message>
    <message>
        <source>星形不接地</source>
        <translation>ungrounded star</translation>
    </message>
    <message>
        <source>%1：%2 kV，%3 MVA，%4</source>
        <translation>%1: %2 kV, %3 MVA, %4</translation>
    </message>
    <message>
        <source>中性点：%1</source>
        <translation>Star point: %1</translation>
    </message>
    <message>
        <source>额定：%1 MVA，%2 kV</source>
        <translation>Rating: %1 MVA, %2 kV</translation>
    </message>
    <message>
        <source>次暂态阻抗：%1（标幺值）</source>
        <translation>Subtransient impedance: %1 (per unit)</translation>
    </message>
    <message>
        <source>出力：%1 MW，%2 Mvar</source>
        <translation>Output: %1 MW, %2 Mvar</translation>
    </message>
    <message>
        <source>额定：%1 Mvar，%2 kV</source>
        <translation>Rating: %1 Mvar, %2 kV</translation>
    </message>
    <message>
        <source>功率：%1 MW，%2 Mvar</source>
        <translation>Power: %1 MW, %2 Mvar</translation>
    </message>
</context>
<context>
    <name>DiagramLayout</name>
    <message>
        <source>单线图的自动布局没有完成，厂站按行排列。</source>
        <translation>The diagram's layout did not finish; the stations stand in rows.</translation>
    </message>
</context>
</TS>
